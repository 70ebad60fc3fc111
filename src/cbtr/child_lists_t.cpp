#include "cbtr/child_lists_t.h"

namespace cbtr {

child_lists_t::child_lists_t(std::span<const std::uint32_t> list, std::span<const std::uint8_t> masks) {
  std::array<std::uint32_t, 8> count{};
  for (std::uint8_t m : masks)
    for (int k = 0; k < 8; ++k) count[k] += (m >> k) & 1u;
  for (int k = 0; k < 8; ++k) _start[k + 1] = _start[k] + count[k];
  _items.resize(_start[8]);
  std::array<std::uint32_t, 8> next;
  for (int k = 0; k < 8; ++k) next[k] = _start[k];
  for (std::size_t i = 0; i < list.size(); ++i)
    for (int k = 0; k < 8; ++k)
      if ((masks[i] >> k) & 1u) _items[next[k]++] = list[i];
}

}  // namespace cbtr
