#pragma once

// The exact triangle that tool volumes are made of, as the sweep builders
// hand it to cached_tris_t:
//   a, b, c       corners, counter-clockwise seen from outside
//   normal        exact and unnormalised, cross(b - a, c - a) or a vector of
//                 the same direction and sense
//   unit_normal   the unit normal in doubles; NaN in all three until computed

#include <vector>

#include "geom/fraction_geom_util"

namespace cbtr {

using tool_tri_t = geom::tri3<geom::vec3fr, geom::vec3fr, geom::vec3d>;
using tool_tris_t = std::vector<tool_tri_t>;

// cross(b - a, c - a) with every component packed.
geom::vec3fr reduced_cross(const geom::vec3fr& a, const geom::vec3fr& b, const geom::vec3fr& c);

bool is_zero(const geom::vec3fr& v);

// The unit vector along the doubles of n; n is evaluated in place.
geom::vec3d unit_of(geom::vec3fr& n);

// A triangle with the given exact normal and its unit normal still NaN.
tool_tri_t make_tool_tri(const geom::vec3fr& a, const geom::vec3fr& b, const geom::vec3fr& c,
                         const geom::vec3fr& normal);

}  // namespace cbtr
