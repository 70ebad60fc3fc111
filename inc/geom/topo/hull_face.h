#pragma once

// One face of a convex hull: the points that lie in one supporting plane,
// made into a convex polygon and cut into triangles.
//
// The polygon runs counter-clockwise seen from the tip of the plane's
// outward normal n and starts with the known edge b -> a. Points on its
// boundary between two corners stay in it as vertices, so that the face on
// the other side of that boundary meets the same vertices; points inside it,
// and points on the segment a b itself, are left out.

#include <array>
#include <cstdint>
#include <vector>

#include "geom/topo/hull_point_t.h"

namespace geom {

using hull_index_t = std::uint32_t;

std::vector<hull_index_t> hull_face_polygon(const std::vector<hull_point_t>& pts, hull_index_t b, hull_index_t a,
                                            const std::vector<hull_index_t>& others, const vec3fr& n);

// Triangles over a convex polygon with a positive area, counter-clockwise
// like the polygon. Vertices between two collinear neighbours are never a
// triangle's tip, so no triangle is without area.
std::vector<std::array<hull_index_t, 3>> triangulate_convex(const std::vector<hull_point_t>& pts,
                                                            std::vector<hull_index_t> polygon, const vec3fr& n);

}  // namespace geom
