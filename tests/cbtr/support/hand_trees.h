#pragma once

// Small cube trees put together cell by cell, for tests that need exact
// control over kinds, corner words, tips and empty slots.

#include <cstdint>
#include <memory>

#include "cbtr/model/cube_tree_t.h"

namespace quvra_test {

// Cell c of parent (a branch), created with its children array if needed,
// at the child's centre, with the parent link set.
std::shared_ptr<cbtr::cube_node_t> add_child(const std::shared_ptr<cbtr::cube_node_t>& parent, int c, std::int32_t kind,
                                             std::uint32_t corners);

// Puts the tip of every crossing edge at fraction t of the edge from its low
// end, and NaN on every other edge.
void place_tips(cbtr::cube_node_t& node, double t);

// Corner word with the listed corners solid and the rest air.
std::uint32_t solid_corners(std::initializer_list<int> corners);

// Gives a branch the corner word and tips that its children imply.
void summarise(cbtr::cube_node_t& branch);

// A tree whose root is a fresh cell of the given kind and corners.
std::unique_ptr<cbtr::cube_tree_t> tree_with_root(std::uint32_t resolution, std::int32_t kind, std::uint32_t corners);

// Resolution 2, every kind of record and slot: a root branch over
//   0 leaf, 1 air, 2 solid, 3 null, 4 null, 5 branch (0 leaf, 7 leaf),
//   6 branch with no children, 7 leaf.
std::unique_ptr<cbtr::cube_tree_t> mixed_tree();

// Resolution 2, full to depth 2: a root branch over eight branches of
// eight leaves each, every leaf with one solid corner.
std::unique_ptr<cbtr::cube_tree_t> full_tree();

}  // namespace quvra_test
