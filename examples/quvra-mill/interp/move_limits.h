#pragma once

// The limits of interp_options_t as both languages apply them to the moves
// they make.

#include <cstddef>

#include "interp/interp_options_t.h"

namespace mill {

// Throws std::invalid_argument when a coordinate of point lies beyond
// options.max_coordinate.
void check_reach(const vec3_t& point, const interp_options_t& options);

// Throws std::invalid_argument when adding count moves to made ones would
// exceed options.max_moves.
void check_room(std::size_t made, std::size_t count, const interp_options_t& options);

}  // namespace mill
