#include "host/tool_mesh.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>
#include <string>

#include "host/tri_records.h"
#include "mech/apt_derivative_t.h"
#include "mech/apt_t.h"

namespace mill {

namespace {

constexpr double radians(double degrees) { return degrees * std::numbers::pi / 180; }

// Chords of a circle of radius r no further than tol from it subtend at most
// this angle.
double chord_angle(double r, double tol) {
  return tol >= r ? std::numbers::pi / 2 : 2 * std::acos(1 - tol / r);
}

void add_arc(std::vector<outline_point_t>& out, const mech::apt_t& t, const mech::apt_derivative_t& der,
             double tol) {
  const double a0 = std::atan2(der.v[6] - t.f, der.v[7] - t.e);
  const double a1 = std::atan2(der.v[8] - t.f, der.v[9] - t.e);
  const int n = std::max(1, static_cast<int>(std::ceil((a1 - a0) / chord_angle(t.r, tol))));
  for (int i = 1; i < n; ++i) {
    const double a = a0 + (a1 - a0) * i / n;
    out.push_back({t.f + t.r * std::sin(a), t.e + t.r * std::cos(a)});
  }
  out.push_back({der.v[8], der.v[9]});
}

point3_t ring_point(const outline_point_t& p, double angle) {
  return {p.r * std::cos(angle), p.r * std::sin(angle), p.z};
}

// A sharp corner written inside the diameter (a drill is CUTTER/d,0,0,0,
// alpha,0,h: the corner at its tip) means the bottom cone runs on through it
// until it reaches the diameter; the library's outline wants the corner
// where the cone meets the flank.
mech::apt_t apt_of(const tool_desc_t& t, double length) {
  const double a = radians(t.alpha), b = radians(t.beta);
  if (t.r > 0 || t.e >= t.d / 2) return {t.d, t.r, t.e, t.f, a, b, length};
  return {t.d, 0, t.d / 2, t.f + (t.d / 2 - t.e) * std::tan(a), a, b, length};
}

}  // namespace

std::vector<outline_point_t> tool_outline(const tool_desc_t& tool, double length, double tol) {
  const mech::apt_t apt = apt_of(tool, length);
  const mech::apt_derivative_t der(apt);
  if (!(length > der.v[8]))
    throw std::invalid_argument("tool length " + std::to_string(length) +
                                " mm does not reach above the cutter's corner");
  const double top_r = der.v[9] + (length - der.v[8]) * der.v[5];
  if (!(top_r > 0)) throw std::invalid_argument("the tool's flank meets its axis below its length");
  std::vector<outline_point_t> out;
  // A flat bottom starts off the axis and is closed by a fan; any other
  // bottom comes to a point at the tip.
  if (der.v[6] != 0) out.push_back({0, 0});
  out.push_back({der.v[6], der.v[7]});
  if (apt.r > 0) add_arc(out, apt, der, tol);
  out.push_back({length, top_r});
  return out;
}

int revolve_sides(const std::vector<outline_point_t>& outline, double tol) {
  double widest = 0;
  for (const outline_point_t& p : outline) widest = std::max(widest, p.r);
  const double sides = std::ceil(2 * std::numbers::pi / chord_angle(widest, tol));
  return static_cast<int>(std::clamp(sides, 12.0, 128.0));
}

std::vector<double> revolve_outline(const std::vector<outline_point_t>& outline, int sides) {
  std::vector<double> out;
  const double step = 2 * std::numbers::pi / sides;
  for (int j = 0; j < sides; ++j) {
    const double a = step * j;
    const double b = j + 1 == sides ? 0 : step * (j + 1);
    const outline_point_t& first = outline.front();
    const outline_point_t& last = outline.back();
    if (first.r > 0) append_triangle(out, {0, 0, first.z}, ring_point(first, b), ring_point(first, a));
    for (std::size_t i = 0; i + 1 < outline.size(); ++i) {
      const point3_t p = ring_point(outline[i], a), q = ring_point(outline[i], b);
      const point3_t s = ring_point(outline[i + 1], a), t = ring_point(outline[i + 1], b);
      // On the axis a ring is one point and its quad one triangle.
      if (outline[i].r > 0) append_triangle(out, p, q, t);
      if (outline[i + 1].r > 0) append_triangle(out, p, t, s);
    }
    if (last.r > 0) append_triangle(out, {0, 0, last.z}, ring_point(last, a), ring_point(last, b));
  }
  return out;
}

std::vector<double> tool_surface(const tool_desc_t& tool, double length, double tol) {
  const std::vector<outline_point_t> outline = tool_outline(tool, length, tol);
  return revolve_outline(outline, revolve_sides(outline, tol));
}

}  // namespace mill
