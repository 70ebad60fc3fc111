#include "interp/arc_centre.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>

namespace mill {

namespace {

// CAM systems round centres and end points to a few decimals; anything
// beyond this is a wrong program, not rounding.
double radius_slack(double radius) { return std::max(0.01, 1e-3 * radius); }

}  // namespace

void place_centre_by_radius(arc_t& arc, double radius) {
  const std::array<int, 3> axes = plane_axes(arc.plane);
  const int a0 = axes[0];
  const int a1 = axes[1];
  const double d0 = arc.end[a0] - arc.start[a0];
  const double d1 = arc.end[a1] - arc.start[a1];
  const double chord = std::hypot(d0, d1);
  if (chord < 1e-9) throw std::invalid_argument("a radius arc needs distinct start and end");
  const double r = std::abs(radius);
  const double half = chord / 2;
  if (r < half - radius_slack(r)) throw std::invalid_argument("radius too small to reach the end");
  const double rise = std::sqrt(std::max(0.0, r * r - half * half));
  // Left of the chord direction holds the centre of a short counter-clockwise
  // arc; a clockwise or a long arc puts it on the right.
  const double side = (arc.ccw == (radius > 0)) ? 1.0 : -1.0;
  arc.centre = arc.start;
  arc.centre[a0] = arc.start[a0] + d0 / 2 - side * rise * d1 / chord;
  arc.centre[a1] = arc.start[a1] + d1 / 2 + side * rise * d0 / chord;
}

void check_end_on_circle(const arc_t& arc) {
  const std::array<int, 3> axes = plane_axes(arc.plane);
  const int a0 = axes[0];
  const int a1 = axes[1];
  const double r_start = std::hypot(arc.start[a0] - arc.centre[a0], arc.start[a1] - arc.centre[a1]);
  const double r_end = std::hypot(arc.end[a0] - arc.centre[a0], arc.end[a1] - arc.centre[a1]);
  if (r_start < 1e-9) throw std::invalid_argument("arc centre lies on its start point");
  if (std::abs(r_end - r_start) > radius_slack(r_start))
    throw std::invalid_argument("arc end does not lie on the circle through its start");
}

}  // namespace mill
