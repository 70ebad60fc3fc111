#pragma once

// A stock on screen: the cells at the depth the view affords, each through
// its cached drawing. Branches at that depth are drawn by their coarse
// summary surface; cells out of view are skipped with their subtrees.

#include "cbtr/model/cube_tree_t.h"
#include "disp/bind.h"

namespace cbtr {

// Draws tree in the space of the top of b's stack and returns the depth
// drawn. Needs a context locked. Safe while a step changes the tree: a
// frame may then mix old and new cells.
int draw_tree(cube_tree_t& tree, disp::bind& b);

}  // namespace cbtr
