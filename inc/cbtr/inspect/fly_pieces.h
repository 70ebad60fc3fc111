#pragma once

// Chips: pieces of solid that a cut has separated from the main body. Cells
// that share a solid lattice corner belong to one piece; the piece with the
// most cells is the body, and every other piece is emptied.

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "cbtr/model/cube_tree_t.h"

namespace cbtr {

// Empties the cells of every piece but the biggest; answers how many cells
// it emptied. A step: it must not overlap another step on the tree.
std::size_t remove_fly_pieces(cube_tree_t& tree);

// Leaves with a tip gone infinite, in depth-first order: the cell's box and
// the edges, ascending.
struct inf_edge_cut_t {
  std::array<double, 6> box;
  std::vector<std::uint32_t> edges;
};
std::vector<inf_edge_cut_t> inf_edge_cuts(const cube_tree_t& tree);

}  // namespace cbtr
