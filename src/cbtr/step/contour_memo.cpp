#include "cbtr/step/contour_memo.h"

#include <atomic>

namespace cbtr {

namespace {

std::atomic<std::size_t> most_contours[2] = {8192, 8192};

std::atomic<std::size_t>& memo_of(bool subtract) { return most_contours[subtract ? 0 : 1]; }

}  // namespace

std::size_t expected_contours(bool subtract) { return memo_of(subtract).load(std::memory_order_relaxed); }

void note_contours(bool subtract, std::size_t count) {
  std::atomic<std::size_t>& memo = memo_of(subtract);
  std::size_t seen = memo.load(std::memory_order_relaxed);
  while (count > seen && !memo.compare_exchange_weak(seen, count, std::memory_order_relaxed)) {
  }
}

}  // namespace cbtr
