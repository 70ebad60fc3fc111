#pragma once

// Taking a tool leaf out of a stock leaf of the same cell, edge by edge:
// the stock keeps a tip where the tool leaves its solid part alone, takes
// the tool's tip where the tool cuts the solid part back, and loses the tip
// where the tool empties the edge. Corners inside both become air.

#include <cstdint>

#include "cbtr/model/cube_node_t.h"

namespace cbtr {

// Merges tool into stock; true when a tip changed (a corner alone doesn't
// count). With touch_counts, a tool tip equal to the stock tip is taken and
// counts as a change; without, it leaves the edge as it was.
bool merge_tool_leaf(cube_node_t& stock, const cube_node_t& tool, bool touch_counts);

// Whether the solid of a node has positive volume, and does not only lie
// against its faces: a leaf needs a solid corner whose three edges all hold
// solid for some length from it; a branch needs such a leaf or a solid
// cell. The leaf form reads the leaf through the corner word given.
bool leaf_holds_volume(const cube_node_t& leaf, std::uint32_t corners);
bool holds_volume(const cube_node_t& node);

// Whether a merge at this cell size is right:
//   1  merge here
//   2  the tool takes nothing from the stock here
//   3  too coarse to tell: split the cell
int compare_leaf_with_tool(std::uint32_t stock_word, const cube_node_t::tips_t& stock_tips, std::uint32_t tool_word,
                           const cube_node_t::tips_t& tool_tips);

}  // namespace cbtr
