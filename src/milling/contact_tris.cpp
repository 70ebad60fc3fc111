#include "milling/contact_tris.h"

#include <algorithm>
#include <cmath>

#include "milling/vector_ops.h"

namespace mech {

namespace {

// How strongly a corner moves into the surface: the signed square of the
// normal part of its motion over the motion's size; tiny marks count as on
// the cut, so that a surface sliding along itself is not split by noise.
double motion_mark(const geom::vec3d& corner, const geom::vec3d& normal, const geom::mat4d& motion) {
  const geom::vec3d w = motion.apply(corner);
  const double wn = geom::dot(w, normal);
  const double s = std::copysign(wn * wn / geom::dot(w, w), wn);
  return std::abs(s) < 1e-6 ? 0.0 : s;
}

// The triangle's part with positive marks, fanned; corners on the cut stay.
void append_front(const contact_tri_t& t, const geom::mat4d& motion, std::vector<contact_tri_t>& out) {
  double s[3];
  for (int i = 0; i < 3; ++i) s[i] = motion_mark(t.v[i], t.normal, motion);
  if (!(s[0] > 0 || s[1] > 0 || s[2] > 0)) return;
  std::vector<geom::vec3d> polygon;
  for (int i = 0; i < 3; ++i) {
    const int j = (i + 1) % 3;
    if (s[i] >= 0) polygon.push_back(t.v[i]);
    if ((s[i] > 0 && s[j] < 0) || (s[i] < 0 && s[j] > 0)) {
      polygon.push_back(t.v[i] + (t.v[j] - t.v[i]) * (s[i] / (s[i] - s[j])));
    }
  }
  for (std::size_t i = 2; i < polygon.size(); ++i)
    out.push_back({{polygon[0], polygon[i - 1], polygon[i]}, t.normal, true});
}

double lowest_z_of(const contour_loop_t& loop) {
  double z = loop.front().z;
  for (const geom::vec3d& p : loop) z = std::min(z, p.z);
  return z;
}

}  // namespace

geom::vec3d winding_normal(const contact_tri_t& t) { return unit(geom::cross(t.v[1] - t.v[0], t.v[2] - t.v[0])); }

std::vector<contact_tri_t> fan_contours(const milling_contours_t& contours) {
  std::vector<contact_tri_t> out;
  for (const contour_loop_t& loop : contours.loops) {
    for (std::size_t i = 2; i < loop.size(); ++i) out.push_back({{loop[0], loop[i - 1], loop[i]}});
  }
  return out;
}

std::vector<contact_tri_t> fan_contours_clipped(const milling_contours_t& contours, const geom::mat4d& motion,
                                                double lowest_z) {
  std::vector<contact_tri_t> out;
  for (const contour_loop_t& loop : contours.loops) {
    if (loop.size() < 3 || !(lowest_z_of(loop) >= lowest_z)) continue;
    for (std::size_t i = 2; i < loop.size(); ++i) {
      contact_tri_t t{{loop[0], loop[i - 1], loop[i]}};
      t.normal = winding_normal(t);
      t.has_normal = true;
      if (is_finite(t.normal)) append_front(t, motion, out);
    }
  }
  return out;
}

}  // namespace mech
