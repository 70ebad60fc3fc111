#pragma once

// The stock's surface handed to a host, at a chosen coarseness: cells no
// wider than about `width` give their triangles; a branch at that depth
// gives the coarse surface of its summary.

#include <array>
#include <vector>

#include "cbtr/model/cube_tree_t.h"

namespace cbtr {

// The depth whose cell diagonal is about width: -floor(log2(width /
// (131072 sqrt 2))), from 0 (the root, also for an infinite width) to 26
// (also for a width of 0). The width is never negative or NaN: the boundary
// refuses those.
int export_depth(double width);

// Twelve doubles per triangle: corners, then the normal as cached (NaN
// where nothing computed it yet).
std::vector<std::array<double, 12>> surface_records(const cube_tree_t& tree, double width);

// Fifteen doubles per triangle: colour (red, green, blue), unit normal,
// corners. Cells without a colour of their own are white.
std::vector<std::array<double, 15>> coloured_surface_records(const cube_tree_t& tree, double width);

}  // namespace cbtr
