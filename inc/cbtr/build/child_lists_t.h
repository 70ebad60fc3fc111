#pragma once

// The pieces of a cell's list that may reach each of its eight children,
// kept in one buffer: a cell hands its list down once per level, and eight
// growing vectors per cell cost more than the test that fills them.

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace cbtr {

class child_lists_t {
 public:
  // masks[i] has bit k set when list[i] may reach child k.
  child_lists_t(std::span<const std::uint32_t> list, std::span<const std::uint8_t> masks);

  std::span<const std::uint32_t> operator[](int k) const {
    return {_items.data() + _start[k], _start[k + 1] - _start[k]};
  }

 private:
  std::vector<std::uint32_t> _items;
  std::array<std::uint32_t, 9> _start{};
};

}  // namespace cbtr
