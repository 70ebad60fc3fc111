#ifndef QUVRA_COMMON_DEBUG_UTIL_H
#define QUVRA_COMMON_DEBUG_UTIL_H

#include <stdint.h>

#include "quvra_export.h"

QV_EXTERN_C_BEGIN

/* A process-wide scratch switch for the host; the library never reads it. */
QV_API int32_t debug_util__get_debug_var(void) QV_NOEXCEPT;
QV_API void debug_util__set_debug_var(int32_t v) QV_NOEXCEPT;

QV_EXTERN_C_END

#endif
