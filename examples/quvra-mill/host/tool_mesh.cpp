#include "host/tool_mesh.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>
#include <string>

#include "geom/Stl3d.h"
#include "host/tri_records.h"
#include "mech/apt_derivative_t.h"

namespace mill {

namespace {

constexpr double radians(double degrees) { return degrees * std::numbers::pi / 180; }

// Chords of a circle of radius r no further than tol from it subtend at most
// this angle.
double chord_angle(double r, double tol) { return tol >= r ? std::numbers::pi / 2 : 2 * std::acos(1 - tol / r); }

// The radius at the top of the cut-off flank.
double top_radius(const mech::apt_derivative_t& der, double length) {
  return der.v[9] + (length - der.v[8]) * der.v[5];
}

}  // namespace

mech::apt_t tool_apt(const tool_desc_t& t, double length) {
  const double a = radians(t.alpha), b = radians(t.beta);
  // A sharp corner written inside the diameter (a drill is CUTTER/d,0,0,0,
  // alpha,0,h: the corner at its tip) means the bottom cone runs on through
  // it until it reaches the diameter. The library takes the corner as where
  // bottom and flank meet, so given as written the flank starts on the axis
  // and the whole tool collapses onto it; the corner is moved there first.
  const mech::apt_t apt = t.r > 0 || t.e >= t.d / 2
                              ? mech::apt_t{t.d, t.r, t.e, t.f, a, b, length}
                              : mech::apt_t{t.d, 0, t.d / 2, t.f + (t.d / 2 - t.e) * std::tan(a), a, b, length};
  const mech::apt_derivative_t der(apt);
  if (!(length > der.v[8]))
    throw std::invalid_argument("tool length " + std::to_string(length) +
                                " mm does not reach above the cutter's corner");
  if (!(top_radius(der, length) > 0)) throw std::invalid_argument("the tool's flank meets its axis below its length");
  return apt;
}

facet_counts_t facet_counts(const mech::apt_t& apt, double tol) {
  const mech::apt_derivative_t der(apt);
  const double widest = std::max({der.v[7], der.v[9], top_radius(der, apt.h)});
  facet_counts_t c;
  c.sides = static_cast<int>(std::clamp(std::ceil(2 * std::numbers::pi / chord_angle(widest, tol)), 12.0, 128.0));
  c.arc_steps = 1;
  if (apt.r > 0) {
    // The library gives an arc of up to half a turn arc_steps chords, so
    // the arc's own span sets the count.
    const double span = std::atan2(der.v[8] - apt.f, der.v[9] - apt.e) - std::atan2(der.v[6] - apt.f, der.v[7] - apt.e);
    c.arc_steps = static_cast<int>(std::clamp(std::ceil(span / chord_angle(apt.r, tol)), 1.0, 64.0));
  }
  return c;
}

std::vector<double> tool_surface(const tool_desc_t& tool, double length, double tol) {
  const mech::apt_t apt = tool_apt(tool, length);
  const facet_counts_t c = facet_counts(apt, tol);
  const geom::Stl3d soup = apt.get_Stl3d(c.sides, c.arc_steps);
  const std::uint64_t count = stl3d__tris_size(soup.stl.get());
  if (count == 0) throw std::runtime_error("the library made no surface for the tool");
  const double* rec = stl3d__tris_data(soup.stl.get());
  std::vector<double> out;
  out.reserve(12 * count);
  // The library leaves the normals to us (NaN).
  for (std::uint64_t i = 0; i < count; ++i, rec += 12)
    append_triangle(out, {rec[0], rec[1], rec[2]}, {rec[3], rec[4], rec[5]}, {rec[6], rec[7], rec[8]});
  return out;
}

}  // namespace mill
