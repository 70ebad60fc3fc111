#ifndef QUVRA_COMMON_LOG_H
#define QUVRA_COMMON_LOG_H

#include "quvra_export.h"

QV_EXTERN_C_BEGIN

/* Receives every log line that the library writes, as bare text without a
   line end. Called on whichever thread wrote the line. */
typedef void (*log_func)(const char* msg);

/* Routes log lines to fn as well as to the console and "log-cpp.txt".
   Null switches the callback off. Set it before work starts: the slot is not
   locked. */
QV_API void set_log_func(log_func fn) QV_NOEXCEPT;

QV_EXTERN_C_END

#endif
