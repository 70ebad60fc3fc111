#pragma once

// Splitting a leaf into its eight children from its own corners and tips
// alone, without the triangles that made it, and the reverse test.
//
// The cell is seen as a 3 x 3 x 3 grid of points: its corners (index 0 and
// 2 on each axis), the midpoints of its edges, the centres of its faces and
// its own centre (index 1). Each face is split in two dimensions: the
// surface crosses it along the straight line between the two tips on its
// edges, which gives the states of the face centre and the tips of the four
// inner lines. A face crossed on all four edges (a saddle) can't be split.
// Inside, the line between two opposite face centres is crossed halfway
// between the crossings of the two face lines parallel to it; the three
// lines through the centre must agree on its state.

#include <array>
#include <cstdint>
#include <optional>

#include "cbtr/model/cell_surface.h"
#include "cbtr/model/cell_t.h"
#include "cbtr/model/cube_node_t.h"

namespace cbtr {

struct child_plan_t {
  std::uint32_t corners;
  std::array<double, 12> tips;
};

// The children of a cell with this corner word and these tips. A point
// exactly on the surface takes `mode`. Nothing when the cell can't be split.
std::optional<std::array<child_plan_t, 8>> plan_split(const cell_t& cell, std::uint32_t word,
                                                      const cube_node_t::tips_t& tips, std::uint32_t mode);

// Turns leaf into a branch of the planned children (uniform children stay
// null slots), each with the leaf's attachment. False, and the leaf as it
// was, when it can't be split.
bool split_leaf(const std::shared_ptr<cube_node_t>& leaf, std::uint32_t mode);

// Whether a branch whose children are all leaves or null is exactly what
// splitting one leaf with the branch's own word and tips would give; if so
// the branch becomes that leaf. children are the branch's own, as the
// caller has them already.
bool try_collapse(cube_node_t& branch, std::uint32_t mode, const child_snapshot_t& children);

}  // namespace cbtr
