#pragma once

// The one way a cell's derived data is found or made: through the node's
// weak slot, with the process-wide cache deciding how long it lives.

#include <atomic>
#include <memory>

#include "common/cache_t.h"

namespace cbtr {

// A hit is made the cache's newest entry. On a miss build() makes the entry
// outside any lock; it is installed unless another thread has installed a
// live entry meanwhile, in which case that one is returned (and this one
// dropped). An expired entry in the slot counts as empty.
template <class Entry, class Build>
std::shared_ptr<Entry> cached_in_node(std::atomic<std::weak_ptr<Entry>>& slot, common::lru_cache_t& cache,
                                      Build&& build) {
  std::weak_ptr<Entry> seen = slot.load();
  if (std::shared_ptr<Entry> hit = seen.lock()) {
    cache.touch(hit);
    return hit;
  }
  const std::shared_ptr<Entry> made = build();
  while (!slot.compare_exchange_weak(seen, made)) {
    if (std::shared_ptr<Entry> other = seen.lock()) return other;
  }
  cache.touch(made);
  return made;
}

}  // namespace cbtr
