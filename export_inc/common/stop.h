#ifndef QUVRA_COMMON_STOP_H
#define QUVRA_COMMON_STOP_H

/* The cancellation pair, with the semantics of the standard stop token: a
   host keeps a stop_source, hands tokens to long operations, and requests a
   stop from any thread. Operations poll the token and end at their next safe
   point. Callbacks that operations register run on the requesting thread. */

#include "quvra_export.h"

#ifdef __cplusplus
struct stop_source;
struct stop_token;
#else
typedef struct stop_source stop_source;
typedef struct stop_token stop_token;
#endif

QV_EXTERN_C_BEGIN

/* New source with its own stop state. Owned by the caller, free with
   delete__stop_source. Null only when the source itself can't be allocated;
   a source whose state could not be allocated reports stop_possible 0. */
QV_API stop_source* new__stop_source(void) QV_NOEXCEPT;

/* Null-safe. The shared state lives on while tokens hold it. */
QV_API void delete__stop_source(stop_source* s) QV_NOEXCEPT;

/* New token on the source's state. Owned by the caller, free with
   delete__stop_token. Null when s is null or the allocation fails. */
QV_API stop_token* stop_source__get_token(const stop_source* s) QV_NOEXCEPT;

/* Null-safe. */
QV_API void delete__stop_token(stop_token* t) QV_NOEXCEPT;

/* 1 if this call made the request (and ran the registered callbacks on this
   thread before returning), 0 if a stop was already requested or there is no
   state. */
QV_API int stop_source__request_stop(stop_source* s) QV_NOEXCEPT;

/* 1 when the source has a state. */
QV_API int stop_source__stop_possible(const stop_source* s) QV_NOEXCEPT;

/* 1 once a stop has been requested. */
QV_API int stop_source__stop_requested(const stop_source* s) QV_NOEXCEPT;
QV_API int stop_token__stop_requested(const stop_token* t) QV_NOEXCEPT;

/* 1 when a stop was requested or a source still lives, i.e. a stop can still
   come or already came. */
QV_API int stop_token__stop_possible(const stop_token* t) QV_NOEXCEPT;

QV_EXTERN_C_END

#endif
