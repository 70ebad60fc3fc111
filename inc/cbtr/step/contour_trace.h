#pragma once

// Contact polygons of a step: the cut of the tool's surface with each cell
// it changed, walked from tip to tip around the cell's faces. They are local
// to a cell and not joined across cells: a contour is a soup of small
// cell-sized polygons.

#include <array>
#include <vector>

#include "cbtr/model/cube_node_t.h"

namespace cbtr {

using contour_point_t = std::array<double, 3>;
using contour_t = std::vector<contour_point_t>;

// The polygons of one leaf of the tool: the boundary of its surface on the
// cell's faces, one polygon per loop, through the tips. forward walks
// against the surface's winding (seen from the solid side), backward with
// it. Loops through a missing tip are left out.
std::vector<contour_t> trace_leaf_polygons(const cube_node_t& leaf, bool forward);

// The polygons of every leaf below node, depth first.
void trace_subtree(const cube_node_t& node, std::vector<contour_t>& out);

// Moves every point onto the box of a stock leaf's surface: its valid tips,
// extended to the cell's face on an axis where a corner of that face is
// solid.
void clamp_to_surface_box(std::vector<contour_t>& polygons, const cube_node_t& stock_leaf);

// The sum of the areas of the polygons' ear triangles (p0, p1, p2),
// (p1, p2, p3), ...: the area of a triangle, and close to the area of a
// small flat polygon.
double contour_area(const std::vector<contour_t>& polygons);

}  // namespace cbtr
