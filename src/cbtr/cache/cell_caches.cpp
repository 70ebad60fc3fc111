#include "cbtr/cache/cell_caches.h"

#include <atomic>

#include "cbtr/model/cube_tree_t.h"
#include "cbtr/model/tree_walk.h"

namespace cbtr {

namespace {

constexpr std::uint64_t default_rendering_cap = 262144000;

std::atomic<std::uint64_t> node_limit_value{0};
std::atomic<std::uint64_t> epoch{0};

}  // namespace

common::lru_cache_t& tris_cache() {
  static common::lru_cache_t cache(0);
  return cache;
}

common::lru_cache_t& drawing_cache() {
  static common::lru_cache_t cache(default_rendering_cap);
  return cache;
}

void set_rendering_cap(std::uint64_t cap_bytes) {
  drawing_cache().set_cap(cap_bytes);
  node_limit_value = (cap_bytes >> 5) / 14580;
}

std::uint64_t node_limit() { return node_limit_value; }

std::uint64_t drawing_epoch() { return epoch; }

void raise_drawing_epoch() { ++epoch; }

void clear_drawing_cache() {
  drawing_cache().clear();
  raise_drawing_epoch();
}

void free_display_caches(const cube_tree_t& tree) {
  for_each_node(tree, [](const cube_node_t& node) {
    node.draw_cache.store({});
    node.tri_cache.store({});
  });
  raise_drawing_epoch();
}

}  // namespace cbtr
