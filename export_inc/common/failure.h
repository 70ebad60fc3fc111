#ifndef QUVRA_COMMON_FAILURE_H
#define QUVRA_COMMON_FAILURE_H

/* The one path by which a broken contract ends the process, and its
   non-fatal twin. Both print to the standard error stream:

     Program abort: <msg>
     At <func>
     Detail: at line <line> , in file <file>

   The heading reads "Program abort: " for warnings too. */

#include "quvra_export.h"

QV_EXTERN_C_BEGIN

/* Prints the report and calls abort(). Never returns. */
QV_API __attribute__((noreturn)) void _abort_msg(const char* msg, const char* func, const char* file,
                                                 const int* line) QV_NOEXCEPT;

/* Prints the report and returns. */
QV_API void _warning_msg(const char* msg, const char* func, const char* file, const int* line) QV_NOEXCEPT;

QV_EXTERN_C_END

#endif
