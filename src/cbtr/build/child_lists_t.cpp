#include "cbtr/build/child_lists_t.h"

#include <bit>

namespace cbtr {

namespace {

// Calls fn(k) for each child k set in mask; a piece reaches one or two
// children far more often than eight.
template <class Fn>
void for_each_child(unsigned mask, Fn&& fn) {
  for (; mask; mask &= mask - 1) fn(std::countr_zero(mask));
}

}  // namespace

child_lists_t::child_lists_t(std::span<const std::uint32_t> list, std::span<const std::uint8_t> masks) {
  std::array<std::uint32_t, 8> count{};
  for (std::uint8_t m : masks) for_each_child(m, [&](int k) { ++count[k]; });
  for (int k = 0; k < 8; ++k) _start[k + 1] = _start[k] + count[k];
  _items.resize(_start[8]);
  std::array<std::uint32_t, 8> next;
  for (int k = 0; k < 8; ++k) next[k] = _start[k];
  for (std::size_t i = 0; i < list.size(); ++i) for_each_child(masks[i], [&](int k) { _items[next[k]++] = list[i]; });
}

}  // namespace cbtr
