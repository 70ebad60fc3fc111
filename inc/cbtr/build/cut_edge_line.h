#pragma once

// Meeting a triangle with the grid line parallel to `axis` through the
// lattice values u and v on axes axis + 1 and axis + 2 (cyclically).
// Decisions are exact: doubles settle what they can within a proven error
// bound and fractions settle the rest; crossings are stored as doubles that
// keep their exact order against the lattice.

#include "cbtr/build/edge_hit_t.h"
#include "cbtr/build/tri_extension_t.h"

namespace cbtr {

edge_hit_t cut_edge_line(const tri_extension_t& tri, int axis, double u, double v);

}  // namespace cbtr
