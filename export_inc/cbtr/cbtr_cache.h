#ifndef QUVRA_CBTR_CBTR_CACHE_H
#define QUVRA_CBTR_CBTR_CACHE_H

/* The two caches that all cube trees of the process share: the triangles of
   cells and their drawings. Both are least-recently-used lists under a cap
   in bytes, counted as 112 bytes per triangle and 40 bytes per vertex; true
   memory is larger, and a cap is meant to allow for that. Entries are
   derived again whenever they are wanted after eviction, so the caps bound
   memory, never correctness. Safe to call from any thread. */

#include <stdint.h>

#include "quvra_export.h"

QV_EXTERN_C_BEGIN

/* Sets the cap of the triangle cache, which is 0 (each new entry evicts all
   others) until a host sets it. Eviction happens at the next insert.
   Returns 0. */
QV_API int32_t cbtr__set_tris_cache_cap_bytes(uint64_t cap) QV_NOEXCEPT;

/* The cap of the triangle cache (not the bytes in use). */
QV_API uint64_t cbtr__get_tris_cache_bytes(void) QV_NOEXCEPT;

/* Drops every entry of the triangle cache. The byte count in use is kept,
   so the inserts that follow evict against it: the cache stays small after
   a clear rather than filling up again at once. */
QV_API void cbtr__clear_cube_tris_cache_buf(void) QV_NOEXCEPT;

/* The same for the drawing cache; views then draw everything anew. */
QV_API void cbtr__clear_drawing_cache_buf(void) QV_NOEXCEPT;

/* The cap of the drawing cache; 262144000 (250 MiB) until set. */
QV_API uint64_t cbtr__get_rendering_cap(void) QV_NOEXCEPT;

/* Sets the cap of the drawing cache, and with it how many cells per depth a
   view may show: (cap >> 5) / 14580. Until this is called a view draws
   each tree as its root cell. Returns 0. */
QV_API int32_t cbtr__set_rendering_cap(uint64_t cap) QV_NOEXCEPT;

QV_EXTERN_C_END

#endif
