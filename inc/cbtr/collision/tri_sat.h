#pragma once

// The separating-axis record of one triangle (tri_sat_t of the boundary), and
// its test against axis-aligned boxes.
//
// Intervals are compared with a margin of 1e-9 of their coordinates: what
// touches within rounding counts as touching, so that a body resting on
// another is a contact after any pose, and the octree never loses a
// triangle that lies on a cell face.

#include <array>

#include "cbtr/collision.h"

namespace cbtr {

using box6_t = std::array<double, 6>;  // min x, y, z, max x, y, z

tri_sat_t make_tri_sat(const double* tri);

// Whether [lo1, hi1] and [lo2, hi2] are apart by more than the margin.
bool intervals_apart(double lo1, double hi1, double lo2, double hi2);

bool touches_box(const tri_sat_t& sat, const box6_t& box);

}  // namespace cbtr
