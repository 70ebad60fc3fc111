#pragma once

// Whether two triangles in one frame touch or cross: their boxes, then the
// separating-axis sequence of both planes and the nine cross products of
// their edges, then the six in-plane edge normals, which only matter when
// the triangles lie in one plane. Any axis that separates them proves them
// apart; touching within the margin of intervals_apart is contact.

#include <array>

namespace cbtr {

using corners3_t = std::array<std::array<double, 3>, 3>;

bool triangles_touch(const corners3_t& a, const corners3_t& b);

}  // namespace cbtr
