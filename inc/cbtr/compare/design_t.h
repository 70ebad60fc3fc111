#pragma once

// The design part of a compare, snapped to the stock's lattice.
//
// Every corner goes to the nearest lattice point (1/1024 model units), the
// finest grid on which the stock's cells stand, so that a design corner, a
// cell's sample point and every difference of them are integers, and a
// squared distance or a side is decided exactly in 128-bit arithmetic: a
// coordinate has 27 bits, a cross product of two differences 56, and the
// largest product the search forms (a normal's dot with a difference,
// squared terms of a segment distance) stays below 2^120.

#include <array>
#include <cstdint>
#include <vector>

#include "geom/stl3d_t.h"

namespace cbtr {

using lattice_point_t = std::array<std::int64_t, 3>;

struct lattice_tri_t {
  std::array<lattice_point_t, 3> p;
  lattice_point_t n;  // (p1 - p0) x (p2 - p0), never zero
};

struct design_t {
  // Snaps every triangle of mesh in its order. A triangle whose snapped
  // corners are collinear has no side, and one with a coordinate that is
  // not finite has no place: both are dropped.
  explicit design_t(const geom::stl3d_t& mesh);

  std::vector<lattice_tri_t> tris;
  geom::stl3d_t soup;  // the same triangles in model coordinates, for the search tree
};

// The nearest lattice coordinate of the model coordinate x.
std::int64_t snap_to_lattice(double x);

}  // namespace cbtr
