#include "interp/arc_linearizer.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>
#include <string>

namespace mill {

namespace {

constexpr double two_pi = 2 * std::numbers::pi;

// Even on a coarse grid a chord spans at most a quarter turn, so that a
// circle keeps its extent on every axis.
constexpr double max_step = std::numbers::pi / 2;

// Signed sweep from angle a to angle b in the arc's sense. A sweep that
// comes out (near) zero is a full turn: start and end coincide.
double sweep_angle(double a, double b, bool ccw) {
  double sweep = ccw ? b - a : a - b;
  sweep = std::fmod(sweep, two_pi);
  if (sweep < 0) sweep += two_pi;
  if (sweep < 1e-12) sweep = two_pi;
  return ccw ? sweep : -sweep;
}

// Counted in doubles: a long helix at a fine tolerance needs more chords
// than an int holds, and must be refused rather than wrap round.
std::size_t chord_count(double sweep, double radius, double chord_tolerance, std::size_t max_chords) {
  // A chord over angle s sits radius * (1 - cos(s / 2)) inside the arc.
  double step = max_step;
  if (chord_tolerance < radius) step = std::min(step, 2 * std::acos(1 - chord_tolerance / radius));
  const double count = std::max(1.0, std::ceil(std::abs(sweep) / step - 1e-9));
  if (!(count <= static_cast<double>(max_chords)))
    throw std::invalid_argument("the arc needs " + std::to_string(count) + " chords, more than the " +
                                std::to_string(max_chords) + " allowed");
  return static_cast<std::size_t>(count);
}

}  // namespace

std::array<int, 3> plane_axes(plane_t plane) {
  switch (plane) {
    case plane_t::xy:
      return {0, 1, 2};
    case plane_t::zx:
      return {2, 0, 1};
    case plane_t::yz:
      return {1, 2, 0};
  }
  return {0, 1, 2};
}

double arc_radius(const arc_t& arc) {
  const std::array<int, 3> axes = plane_axes(arc.plane);
  const int a0 = axes[0];
  const int a1 = axes[1];
  return std::max(std::hypot(arc.start[a0] - arc.centre[a0], arc.start[a1] - arc.centre[a1]),
                  std::hypot(arc.end[a0] - arc.centre[a0], arc.end[a1] - arc.centre[a1]));
}

std::vector<vec3_t> linearize_arc(const arc_t& arc, double chord_tolerance, std::size_t max_chords) {
  const auto [a0, a1, n] = plane_axes(arc.plane);
  const double c0 = arc.centre[a0];
  const double c1 = arc.centre[a1];
  const double r_start = std::hypot(arc.start[a0] - c0, arc.start[a1] - c1);
  const double r_end = std::hypot(arc.end[a0] - c0, arc.end[a1] - c1);
  const double angle_start = std::atan2(arc.start[a1] - c1, arc.start[a0] - c0);
  const double angle_end = std::atan2(arc.end[a1] - c1, arc.end[a0] - c0);
  const double turn = arc.ccw ? two_pi : -two_pi;
  const double sweep = sweep_angle(angle_start, angle_end, arc.ccw) + turn * arc.extra_turns;
  const std::size_t count = chord_count(sweep, arc_radius(arc), chord_tolerance, max_chords);

  std::vector<vec3_t> points;
  points.reserve(count);
  for (std::size_t i = 1; i < count; ++i) {
    const double t = static_cast<double>(i) / static_cast<double>(count);
    const double angle = angle_start + sweep * t;
    const double r = r_start + (r_end - r_start) * t;
    vec3_t p{};
    p[a0] = c0 + r * std::cos(angle);
    p[a1] = c1 + r * std::sin(angle);
    p[n] = arc.start[n] + (arc.end[n] - arc.start[n]) * t;
    points.push_back(p);
  }
  points.push_back(arc.end);
  return points;
}

}  // namespace mill
