#pragma once

// The depth at which a view draws a tree: as deep as the view's cells stay
// within the process-wide node limit at every depth, so that a far view
// draws a few coarse cells (branches drawn by their summaries) and a near
// view the fine cells it can see.

#include <cstdint>
#include <functional>

#include "cbtr/model/cube_tree_t.h"

namespace disp {
class bind;
}

namespace cbtr {

// How a sphere lies against the view: 0 outside, 1 crossing its border,
// 2 wholly inside.
using view_test_t = std::function<int(const double centre[3], double radius)>;

// How node lies against the view, tested as the sphere around its centre
// of radius sqrt(3) times its width.
int cell_view_relation(const cube_node_t& node, const view_test_t& test);

// The deepest depth, at most the tree's resolution, such that at that depth
// and every depth above it the view meets fewer than limit cells; 0 when
// even the root depth fails, and always 0 for limit 0. The cells inside a
// cell wholly in view are counted without testing.
int view_depth(const cube_tree_t& tree, const view_test_t& test, std::uint64_t limit);

// view_depth under the process-wide node limit, then smoothed over the
// calling thread's last ten frames of this tree: the smallest of them.
int choose_draw_depth(cube_tree_t& tree, const view_test_t& test);
int choose_draw_depth(cube_tree_t& tree, disp::bind& b);

}  // namespace cbtr
