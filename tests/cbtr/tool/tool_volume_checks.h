#pragma once

// What every tool volume must be, checked on its exact triangles.

#include <string>

#include "cbtr/tool/tool_tri.h"

namespace quvra_test {

// Empty when every directed edge (between exact points) is met by exactly
// one edge in the opposite direction and occurs once itself: the set is
// closed and consistently oriented. Otherwise the first fault found.
std::string closure_fault(const cbtr::tool_tris_t& tris);

// The enclosed volume by the divergence theorem, exactly, about ref.
geom::fr exact_volume(const cbtr::tool_tris_t& tris, const geom::vec3fr& ref);

// Whether each stored exact normal points the way of its corners' cross
// product.
bool normals_follow_corners(const cbtr::tool_tris_t& tris);

geom::vec3fr exact_point(double x, double y, double z);

}  // namespace quvra_test
