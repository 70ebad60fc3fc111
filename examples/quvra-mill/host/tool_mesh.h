#pragma once

// The closed surface of a cutter, made on the host's side from its seven APT
// parameters: the library works out where bottom, corner arc and flank meet
// (mech::apt_derivative_t); the host samples that outline and revolves it.
// The library's own soup of an APT tool (apt_t::get_Stl3d) comes back as a
// type that only its internal headers define, so a host cannot take it.

#include <vector>

#include "interp/tool_desc_t.h"

namespace mill {

// A point of the outline: height above the tip, distance from the axis.
struct outline_point_t {
  double z = 0;
  double r = 0;
};

// The outline from the tip up to length, with the corner arc in chords no
// further than chord_tolerance from it. A point with r = 0 is on the axis.
// Throws std::invalid_argument when length does not reach past the corner or
// the flank closes on the axis below length.
std::vector<outline_point_t> tool_outline(const tool_desc_t& tool, double length,
                                          double chord_tolerance);

// Sides round the axis so that no chord of the widest circle of outline is
// further than chord_tolerance from it; between 12 and 128.
int revolve_sides(const std::vector<outline_point_t>& outline, double chord_tolerance);

// outline revolved about +z into triangle records of twelve doubles (corners,
// then the unit normal), counter-clockwise from outside and closed by fans
// at both ends where the outline is off the axis.
std::vector<double> revolve_outline(const std::vector<outline_point_t>& outline, int sides);

// The whole tool: tool_outline, then revolve_outline with revolve_sides.
std::vector<double> tool_surface(const tool_desc_t& tool, double length, double chord_tolerance);

}  // namespace mill
