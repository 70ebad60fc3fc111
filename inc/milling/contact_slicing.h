#pragma once

// Cuts of one contact triangle with a plane z = level or a circle about the
// tool axis, as the ranges of angles the cut spans. A plane's segment runs
// counter-clockwise about the axis as seen with the triangle's normal facing
// out of the tool, so a small cut is a small range and never the rest of the
// circle.

#include <map>
#include <optional>
#include <vector>

#include "milling/contact_tris.h"
#include "milling/engagement_t.h"

namespace mech {

using range_map_t = std::map<double, std::vector<angle_range_t>>;

// The segment where the plane z = level cuts t, as angles; nothing unless
// the cut is exactly two distinct points. normal orders the ends.
std::optional<angle_range_t> plane_cut_range(const contact_tri_t& t, const geom::vec3d& normal, double level);

// The arcs of the circle of radius r about the z axis that lie inside t
// seen from above; the whole ring when the circle lies inside it.
std::vector<angle_range_t> circle_cut_ranges(const contact_tri_t& t, double r);

// The radii r0 + k * ring_step, k >= 0, that the triangle's projection on xy
// reaches, with r0 = ring_step / 2 + 0.0001, each with the arc it covers.
void add_exact_rings(const contact_tri_t& t, double ring_step, range_map_t& rings);

// The cheap form for small triangles: the corners farthest apart along the
// axis of the larger extent give a centre m and a size h, and every ring
// within h of |m| takes the angles within h / |m| of m's.
void add_approximate_rings(const contact_tri_t& t, double ring_step, range_map_t& rings);

}  // namespace mech
