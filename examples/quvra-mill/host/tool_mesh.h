#pragma once

// The closed surface of a cutter from its seven APT parameters. The library
// revolves the outline (mech::apt_t::get_Stl3d); the host settles the
// parameters it hands over and how finely the outline is faceted.

#include <vector>

#include "interp/tool_desc_t.h"
#include "mech/apt_t.h"

namespace mill {

// The library's tool for tool cut off at length, angles in radians. A sharp
// corner written inside the diameter is moved out to it (see the source).
// Throws std::invalid_argument when length does not reach past the corner or
// the flank closes on the axis below length.
mech::apt_t tool_apt(const tool_desc_t& tool, double length);

// How finely apt is faceted so that no facet lies further than
// chord_tolerance inside the true surface: sides round the axis (between 12
// and 128) and steps of the corner arc (at least 1, at most 64).
struct facet_counts_t {
  int sides = 0;
  int arc_steps = 0;
};
facet_counts_t facet_counts(const mech::apt_t& apt, double chord_tolerance);

// The whole tool as triangle records (twelve doubles: corners, then the unit
// normal), counter-clockwise from outside. Throws as tool_apt does, and
// std::runtime_error when the library makes no surface.
std::vector<double> tool_surface(const tool_desc_t& tool, double length, double chord_tolerance);

}  // namespace mill
