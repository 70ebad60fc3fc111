#pragma once

// A cell by its lattice centre and depth, before any node exists for it.

#include <array>
#include <cstdint>

#include "cbtr/model/cell_numbering.h"
#include "cbtr/model/lattice.h"

namespace cbtr {

struct cell_t {
  std::array<std::uint32_t, 3> centre;
  int depth;

  std::uint32_t half() const { return half_width(depth); }
  // Lattice coordinate of the cell's low or high face on an axis.
  std::uint32_t face(int axis, bool high) const { return high ? centre[axis] + half() : centre[axis] - half(); }
  double face_model(int axis, bool high) const { return lattice_to_model(face(axis, high)); }
  cell_t child(int k) const {
    return {{child_centre(centre[0], depth, k & 1), child_centre(centre[1], depth, (k >> 1) & 1),
             child_centre(centre[2], depth, (k >> 2) & 1)},
            depth + 1};
  }
};

inline constexpr cell_t root_cell = {{lattice_centre, lattice_centre, lattice_centre}, 0};

}  // namespace cbtr
