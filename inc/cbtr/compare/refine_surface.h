#pragma once

// Splits every leaf of the stock that stands above the tree's resolution
// into children from its own corners and tips, and those in turn, so that
// the surface is measured at the finest cells. A leaf that can't be split
// (a saddle face) stays as it is. The shape does not change; this is a step
// on the tree.

#include "cbtr/model/cube_tree_t.h"

namespace cbtr {

void refine_surface(cube_tree_t& tree);

}  // namespace cbtr
