#pragma once

// The built-in sample: a G-code program of our own for a 100 x 100 x 30 mm
// block with its lower corner at the origin, cut with a 6 mm flat end mill.
// It has the three kinds of work a shop runs: a stepped outside contour with
// arcs at the corners, a two-level pocket cleared in zigzag, and a 3D
// finishing raster over a wavy surface, some three thousand moves
// in all.

#include <array>
#include <string>

namespace mill {

inline constexpr std::array<double, 6> sample_stock_box{0, 0, 0, 100, 100, 30};
inline constexpr double sample_tool_diameter = 6;

// The height of the finishing pass's surface at (x, y), in mm.
double sample_surface_z(double x, double y);

std::string sample_program_text();

}  // namespace mill
