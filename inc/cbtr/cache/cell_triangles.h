#pragma once

// The surface of a stock as triangles, derived cell by cell through the
// process-wide triangle cache.

#include <memory>
#include <vector>

#include "cbtr/model/cube_node_t.h"
#include "cbtr/model/cube_tree_t.h"
#include "cbtr/model/cube_tri_t.h"

namespace cbtr {

// The triangles of node by its row of the surface table: a branch gives the
// coarse surface of its summary. Built on a miss and listed as the newest
// entry of the triangle cache; a hit makes the entry the newest again. Null
// for a uniform node (kind air or solid), which has no surface.
//
// Safe to call from several threads on one node: two of them may both build
// the triangles, and then the one installed first is kept by the node and
// returned to both. The returned entry stays valid while it is held, even
// once the cache has dropped it.
std::shared_ptr<const tri_entry_t> cell_triangles(const cube_node_t& node);

// Every leaf's triangles, leaf by leaf in depth-first order, with each
// leaf's triangles in table order. Empty for an empty tree.
std::vector<cube_tri_t> list_surface(const cube_tree_t& tree);

}  // namespace cbtr
