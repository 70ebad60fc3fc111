#pragma once

// Circular and helical arcs turned into chords.
//
// Notation: an arc lies in a plane spanned by two machine axes (a0, a1),
// chosen so that a0 x a1 is the plane's normal axis n:
//   xy (G17): a0 = X, a1 = Y, n = Z
//   zx (G18): a0 = Z, a1 = X, n = Y
//   yz (G19): a0 = Y, a1 = Z, n = X
// Counter-clockwise means a positive turn from a0 towards a1, seen from +n.
// Along n the arc climbs linearly with the angle: a helix.

#include <array>
#include <cstddef>
#include <vector>

#include "interp/interp_options_t.h"
#include "interp/move_t.h"

namespace mill {

enum class plane_t {
  xy,
  zx,
  yz,
};

// Machine-axis indices {a0, a1, n} of a plane.
std::array<int, 3> plane_axes(plane_t plane);

struct arc_t {
  vec3_t start{};
  vec3_t end{};
  vec3_t centre{};  // only its a0 and a1 coordinates matter
  plane_t plane = plane_t::xy;
  bool ccw = true;
  // Whole turns added to the sweep from start to end. Where start and end
  // coincide in the plane that sweep is already one full turn.
  int extra_turns = 0;
};

// The larger of the distances from the centre to start and to end, in the
// arc's plane.
double arc_radius(const arc_t& arc);

// The chord end points from just after start through end, exactly end last.
// No point of the true arc lies further than chord_tolerance (positive)
// from its chord. Throws std::invalid_argument when that takes more than
// max_chords chords.
// The radius may differ slightly between start and end (rounded program
// values); it then changes linearly along the arc so the path closes on end.
std::vector<vec3_t> linearize_arc(const arc_t& arc, double chord_tolerance,
                                  std::size_t max_chords = interp_options_t{}.max_moves);

}  // namespace mill
