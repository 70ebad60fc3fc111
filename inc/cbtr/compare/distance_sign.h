#pragma once

// On which side of the design a point lies, from the design triangles
// nearest to it, decided exactly.
//
//   nearest feature a face:   the side of that face's plane (the first such
//                             triangle's, if several tie);
//   two triangles, each by an edge, the same edge: the side of the solid
//                             wedge they make there, convex or concave;
//   three or more, the first by a corner: the plane the point lies farthest
//                             from (the greatest (n . w)^2 / |n|^2, the
//                             earlier triangle on a tie) gives the side.
// Anything else (an edge or corner of one triangle alone, edges that are not
// shared) has no sign: an open or broken design can't say where its inside
// is.

#include <vector>

#include "cbtr/compare/nearest_feature.h"

namespace cbtr {

// +1 outside (the side the normals point to), -1 inside, 0 unknown.
// nearest holds the triangles at the least distance, in design order.
int distance_sign(const design_t& design, const std::vector<feature_hit_t>& nearest, const lattice_point_t& q);

}  // namespace cbtr
