#include "cbtr/analytic/stick_convex.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace cbtr {

namespace {

double snapped(double m) {
  constexpr double near = 1e-7;
  if (std::abs(m) < near) return 0.0;
  if (std::abs(m - 1.0) < near) return 1.0;
  if (std::abs(m + 1.0) < near) return -1.0;
  return m;
}

double root_of(double square) { return std::sqrt(std::max(0.0, square)); }

// The outer side of the tube, or the inner one, whichever meets the radius
// given at the band's low joint.
double torus_radius(const stick_segment_t& s, double h) {
  const double across = root_of(s.p[3] * s.p[3] - (h - s.p[4]) * (h - s.p[4]));
  const double at_lo = root_of(s.p[3] * s.p[3] - (s.p[0] - s.p[4]) * (s.p[0] - s.p[4]));
  const bool outer = std::abs(s.p[2] + at_lo - s.p[5]) <= std::abs(s.p[2] - at_lo - s.p[5]);
  return outer ? s.p[2] + across : s.p[2] - across;
}

double band_radius(const stick_segment_t& s, double h) {
  switch (s.kind) {
    case stick_sphere:
      return root_of(s.p[3] * s.p[3] - (h - s.p[2]) * (h - s.p[2]));
    case stick_torus:
      return torus_radius(s, h);
    case stick_cone: {
      const double span = s.p[1] - s.p[0];
      return span > 0.0 ? s.p[2] + (s.p[3] - s.p[2]) * (h - s.p[0]) / span : std::max(s.p[2], s.p[3]);
    }
    case stick_cylinder:
      return s.p[2];
    default:
      return 0.0;
  }
}

double band_max_radius(const stick_segment_t& s) {
  double r = std::max(band_radius(s, s.p[0]), band_radius(s, s.p[1]));
  if (s.kind == stick_sphere && s.p[0] <= s.p[2] && s.p[2] <= s.p[1]) r = std::max(r, s.p[3]);
  if (s.kind == stick_torus && s.p[0] <= s.p[4] && s.p[4] <= s.p[1]) r = std::max(r, band_radius(s, s.p[4]));
  return r;
}

}  // namespace

stick_tool_t::stick_tool_t(const stick_convex_t& stick, const geom::mat4d& placement) {
  geom::mat4d m = placement;
  for (double& v : m.m) v = snapped(v);
  _base = {m.m[12], m.m[13], m.m[14]};
  _axis = {m.m[8], m.m[9], m.m[10]};
  const double length = std::sqrt(_axis.x * _axis.x + _axis.y * _axis.y + _axis.z * _axis.z);
  if (!(length > 0.0)) return;
  // A scaled placement scales heights along the axis as well.
  _axis = {_axis.x / length, _axis.y / length, _axis.z / length};
  for (stick_segment_t s : stick.segments) {
    for (double& v : s.p) v *= length;
    _bands.push_back({s, band_max_radius(s)});
  }
}

void stick_tool_t::to_local(const geom::vec3d& p, double& h, double& r) const {
  const geom::vec3d d{p.x - _base.x, p.y - _base.y, p.z - _base.z};
  h = d.x * _axis.x + d.y * _axis.y + d.z * _axis.z;
  const geom::vec3d side{d.x - h * _axis.x, d.y - h * _axis.y, d.z - h * _axis.z};
  r = std::sqrt(side.x * side.x + side.y * side.y + side.z * side.z);
}

double stick_tool_t::radius_at(double h) const {
  for (const stick_band_t& b : _bands)
    if (h <= b.shape.p[1]) return band_radius(b.shape, h);
  return band_radius(_bands.back().shape, h);
}

double stick_tool_t::inside_margin(const geom::vec3d& p) const {
  double h, r;
  to_local(p, h, r);
  const double lo = _bands.front().shape.p[0], hi = _bands.back().shape.p[1];
  return std::min({h - lo, hi - h, radius_at(std::clamp(h, lo, hi)) - r});
}

bool stick_tool_t::contains(const geom::vec3d& p) const { return inside_margin(p) >= 0.0; }

double stick_tool_t::distance_below(const geom::vec3d& p) const {
  double h, r;
  to_local(p, h, r);
  double best = std::numeric_limits<double>::infinity();
  for (const stick_band_t& b : _bands) {
    const double dh = std::max({b.shape.p[0] - h, 0.0, h - b.shape.p[1]}), dr = std::max(r - b.r_max, 0.0);
    best = std::min(best, std::sqrt(dh * dh + dr * dr));
  }
  return best;
}

int stick_tool_t::surface_code(const geom::vec3d& p, double tolerance) const {
  double h, r;
  to_local(p, h, r);
  const stick_segment_t &tip = _bands.front().shape, &shank = _bands.back().shape;
  if (std::abs(h - tip.p[0]) <= tolerance && r < band_radius(tip, h) - tolerance) return 1;
  if (std::abs(h - shank.p[1]) <= tolerance && r < band_radius(shank, h) - tolerance) return 4;
  return 2;
}

}  // namespace cbtr
