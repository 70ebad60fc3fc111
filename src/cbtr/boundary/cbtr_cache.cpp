// NOLINTBEGIN(bugprone-reserved-identifier): the family__verb names are the boundary's fixed
// contract.
#include "cbtr/cbtr_cache.h"

#include "cbtr/cache/cell_caches.h"

extern "C" {

int32_t cbtr__set_tris_cache_cap_bytes(uint64_t cap) noexcept {
  cbtr::tris_cache().set_cap(cap);
  return 0;
}

uint64_t cbtr__get_tris_cache_bytes(void) noexcept { return cbtr::tris_cache().cap(); }

void cbtr__clear_cube_tris_cache_buf(void) noexcept { cbtr::tris_cache().clear(); }

void cbtr__clear_drawing_cache_buf(void) noexcept { cbtr::clear_drawing_cache(); }

uint64_t cbtr__get_rendering_cap(void) noexcept { return cbtr::drawing_cache().cap(); }

int32_t cbtr__set_rendering_cap(uint64_t cap) noexcept {
  cbtr::set_rendering_cap(cap);
  return 0;
}
}
// NOLINTEND(bugprone-reserved-identifier)
