#include "milling/engagement_build.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "milling/contact_slicing.h"
#include "milling/contact_tris.h"
#include "milling/vector_ops.h"

namespace mech {

namespace {

// Beyond this many triangles the bottom takes the cheap ring form for its
// small triangles.
constexpr std::size_t many_triangles = 256;

geom::mat4d pose_difference(const geom::mat4d& prev, const geom::mat4d& cur) {
  geom::mat4d d{};
  for (int i = 0; i < 16; ++i) d.m[i] = cur.m[i] - prev.m[i];
  return d;
}

bool is_bottom(const contact_tri_t& t, const engagement_request_t& req) {
  if (!(req.bottom_radius > 0.001)) return false;
  if (!req.clip_to_motion) {
    return std::all_of(t.v.begin(), t.v.end(), [](const geom::vec3d& p) { return p.z < 0.0001; });
  }
  const double r2 = req.bottom_radius * req.bottom_radius;
  return -t.normal.z > 0.99 &&
         std::all_of(t.v.begin(), t.v.end(), [r2](const geom::vec3d& p) { return geom::dot(p, p) <= r2; });
}

// Seen from above like a side triangle from outside: the ring cuts then
// read their ranges in the same turning sense.
contact_tri_t flipped(contact_tri_t t) {
  std::swap(t.v[1], t.v[2]);
  t.normal = -t.normal;
  return t;
}

double xy_extent(const contact_tri_t& t) {
  const auto [x_lo, x_hi] = std::minmax({t.v[0].x, t.v[1].x, t.v[2].x});
  const auto [y_lo, y_hi] = std::minmax({t.v[0].y, t.v[1].y, t.v[2].y});
  return std::max(x_hi - x_lo, y_hi - y_lo);
}

void add_side(const contact_tri_t& t, std::span<const double> levels, range_map_t& side) {
  const geom::vec3d n = t.has_normal ? t.normal : winding_normal(t);
  if (!is_finite(n)) return;  // a degenerate triangle says nothing of where the material is
  const auto [z_lo, z_hi] = std::minmax({t.v[0].z, t.v[1].z, t.v[2].z});
  for (auto it = std::lower_bound(levels.begin(), levels.end(), z_lo); it != levels.end() && *it <= z_hi; ++it) {
    if (auto range = plane_cut_range(t, n, *it)) insert_range(side[*it], range->start, range->end);
  }
}

void add_bottom(const contact_tri_t& t, double ring_step, bool many, range_map_t& rings) {
  if (!(ring_step > 0) || !std::isfinite(ring_step)) return;
  if (many && xy_extent(t) <= 2 * ring_step) {
    add_approximate_rings(t, ring_step, rings);
  } else {
    add_exact_rings(t, ring_step, rings);
  }
}

double step_at(std::span<const double> levels, std::span<const double> steps, double pos) {
  const auto it = std::lower_bound(levels.begin(), levels.end(), pos);
  if (it == levels.end() || *it != pos) return std::numeric_limits<double>::quiet_NaN();
  return steps[static_cast<std::size_t>(it - levels.begin())];
}

}  // namespace

engagement_t build_engagement(const milling_contours_t& contours, const engagement_request_t& req) {
  engagement_t out;
  out.tag = req.tag;
  out.ring_step = req.ring_step;
  const geom::mat4d motion = pose_difference(req.pose_prev, req.pose_cur);

  // Contours to triangles; with the motion, only the front of the contact.
  const std::vector<contact_tri_t> tris =
      req.clip_to_motion ? fan_contours_clipped(contours, motion, -req.ring_step) : fan_contours(contours);
  const bool many = tris.size() > many_triangles;

  // Each triangle to the bottom rings or the side slices.
  range_map_t rings;
  range_map_t side;
  for (const contact_tri_t& t : tris) {
    if (is_bottom(t, req)) {
      add_bottom(flipped(t), req.ring_step, many, rings);
    } else {
      add_side(t, req.levels, side);
    }
  }

  // The maps in ascending order become the slices.
  for (auto& [r, ranges] : rings) out.bottom.push_back({r, req.ring_step, std::move(ranges)});
  for (auto& [z, ranges] : side) out.side.push_back({z, step_at(req.levels, req.level_steps, z), std::move(ranges)});
  return out;
}

}  // namespace mech
