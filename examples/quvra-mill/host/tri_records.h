#pragma once

// Triangle records as the library exchanges them: twelve doubles, corners a,
// b, c, then the unit normal.

#include <array>
#include <vector>

namespace mill {

using point3_t = std::array<double, 3>;

// Appends a, b, c with the normal of their counter-clockwise turn; a
// triangle without area is left out.
void append_triangle(std::vector<double>& records, const point3_t& a, const point3_t& b, const point3_t& c);

}  // namespace mill
