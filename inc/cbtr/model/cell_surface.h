#pragma once

// What a cell says about the surface: the triangles of a leaf, and the
// corner word and tips by which a branch summarises its children for
// drawing at a coarser depth.

#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "cbtr/model/cube_node_t.h"
#include "cbtr/model/cube_tri_t.h"

namespace cbtr {

using child_snapshot_t = std::array<std::shared_ptr<cube_node_t>, 8>;

// Triangles through the tips of a leaf, by its row of the surface table.
// A triple with a non-finite tip is skipped, and so is a triangle with two
// identical vertices.
std::vector<cube_tri_t> leaf_triangles(const cube_node_t& leaf);

// Corner word of a branch over these children: corner k of child k, and for
// a null (uniform) child the state of the branch centre. Nothing when every
// child is null: such a branch is not made.
std::optional<std::uint32_t> branch_corner_word(const child_snapshot_t& children);
// The same over the children's corner words, where bit k of known says that
// child k has one.
std::optional<std::uint32_t> branch_corner_word(const std::array<std::uint32_t, 8>& words, std::uint8_t known);

// Tips of the branch's own twelve long edges, gathered from the children's
// half edges. Uses the branch's corner word, which must be current.
void summarise_branch_tips(cube_node_t& branch, const child_snapshot_t& children);

}  // namespace cbtr
