#pragma once

// Finding and checking the centre of a programmed arc; the notation is that
// of arc_linearizer.h. Both throw std::invalid_argument when the program's
// numbers describe no arc.

#include "interp/arc_linearizer.h"

namespace mill {

// The centre for the radius form (R): of the two circles through start and
// end, the one giving an arc under half a turn for positive radius, over
// half a turn for negative. Sets arc.centre.
void place_centre_by_radius(arc_t& arc, double radius);

// The centre form (I J K) fixes the centre; end must then lie on the circle
// through start, up to rounding of the program's numbers.
void check_end_on_circle(const arc_t& arc);

}  // namespace mill
