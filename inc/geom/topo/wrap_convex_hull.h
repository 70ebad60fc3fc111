#pragma once

// The exact convex hull of a point set, built by gift wrapping over the
// stocks of an exact mesh.
//
// Seeds are triangles (indices into the points, counter-clockwise from
// outside) believed to lie on the hull; the wrapping starts from them and
// only closes the gaps, which is where its time goes. A seed is a hint: one
// without area or overlapping an earlier seed is passed over, and seeds
// that turn out to contradict the hull are dropped altogether for a start
// from the extreme point. Without seeds the first face is searched from the
// extreme point. Faces in one plane become one polygon cut into triangles.
//
// The result is closed and consistently oriented. A set without volume (all
// points in one plane, or fewer than four) gives an empty mesh.

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "geom/topo/topo_stl3wfr_t.h"

namespace geom {

using hull_seed_t = std::array<std::uint32_t, 3>;

// points must be distinct.
std::unique_ptr<topo_stl3wfr_t> wrap_convex_hull(const std::vector<vec3fr>& points,
                                                 const std::vector<hull_seed_t>& seeds);

}  // namespace geom
