#pragma once

// The surface of a leaf, by the solid-corner byte of its corner word (bit k
// set when corner k is solid): up to five triangles, each a triple of edge
// numbers whose tips are its vertices.

#include <array>
#include <cstdint>

namespace cbtr {

struct surface_row_t {
  std::uint8_t size;  // number of edge entries: three per triangle
  std::uint8_t edges[15];
};

extern const std::array<surface_row_t, 256> surface_table;

}  // namespace cbtr
