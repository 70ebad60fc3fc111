#ifndef QUVRA_COMMON_PROGRESS_MONITOR_H
#define QUVRA_COMMON_PROGRESS_MONITOR_H

/* Progress records of long operations (building a stock, comparing, writing).
   A monitor is made and destroyed by the operation that runs the work; the
   host reaches it through that operation's callback and never frees it. */

#include <stddef.h>
#include <stdint.h>

#include "quvra_export.h"

#ifdef __cplusplus
namespace common {
struct progress_monitor_t;
}
typedef common::progress_monitor_t progress_monitor_t;
#else
typedef struct progress_monitor_t progress_monitor_t;
#endif

QV_EXTERN_C_BEGIN

/* Steps done. Read without a lock: a plain machine word. */
QV_API int64_t progress_monitor__get_numerator(const progress_monitor_t* m) QV_NOEXCEPT;

/* Steps in all; 0 when the step has no count. */
QV_API int64_t progress_monitor__get_denominator(const progress_monitor_t* m) QV_NOEXCEPT;

/* Copies min(length + 1, capacity) bytes of the current message into buf, so
   a short buffer gets a truncated text without a terminator. Writes nothing
   when m or buf is null. */
QV_API void progress_monitor__get_msg(const progress_monitor_t* m, char* buf, size_t capacity) QV_NOEXCEPT;

/* Starts a new step: sets the message and denominator, resets the numerator
   to 0, then calls the monitor's change callback. msg may be null (empty). */
QV_API void progress_monitor__set_msg(progress_monitor_t* m, const char* msg, int64_t denominator) QV_NOEXCEPT;

/* Stores the numerator, then calls the monitor's change callback. */
QV_API void progress_monitor__set_numerator(progress_monitor_t* m, int64_t value) QV_NOEXCEPT;

/* Renders the monitor and its sub-steps as one line, e.g.
   "build[ 3/10](30%) +cells[40/80](50%)", copying min(length + 1, capacity)
   bytes into buf. */
QV_API void progress_monitor__to_string(const progress_monitor_t* m, char* buf, size_t capacity) QV_NOEXCEPT;

QV_EXTERN_C_END

#endif
