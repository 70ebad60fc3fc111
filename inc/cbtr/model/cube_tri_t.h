#pragma once

// One surface triangle of a leaf, as the display and the surface export see
// it.

#include <array>
#include <cstdint>
#include <limits>

namespace cbtr {

struct cube_node_t;

struct cube_tri_t {
  std::array<std::array<double, 3>, 3> v;
  std::array<double, 3> normal = {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::quiet_NaN(),
                                  std::numeric_limits<double>::quiet_NaN()};
  const cube_node_t* node = nullptr;
  std::uint8_t index = 0;  // position of the triangle in its surface table row
};

}  // namespace cbtr
