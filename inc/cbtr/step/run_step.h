#pragma once

// One machining step on a stock: a tool volume taken away (subtraction) or
// put back (addition), in place. Each level of the recursion builds the
// tool's cells inside the stock's cell as a temporary tree (the delta) and
// merges it into the stock cell by cell:
//   pass 1   per child: recurse into stock branches, split coarse stock
//            leaves where the tool needs finer cells, and make the tool's
//            cells where the stock is uniform or a leaf
//   pass 2   per child not handled by recursion: clear cells inside the
//            tool, graft the tool's cells where the stock was uniform, merge
//            leaf with leaf, and trace the contact polygons where the stock
//            changed
//   refresh  the branch's corners and tips from its children; a branch left
//            empty goes, and one whose children a single leaf describes
//            collapses into it
// Addition is the same walk on the complement of the stock.

#include <cstdint>
#include <vector>

#include "cbtr/analytic/stick_convex.h"
#include "cbtr/build/tri_extension_t.h"
#include "cbtr/model/cube_tree_t.h"
#include "cbtr/step/contour_trace.h"

namespace cbtr {

struct step_options_t {
  bool subtract = true;
  bool want_contours = false;
  // A tool tip equal to a stock tip is taken and counts as a change.
  bool touch_counts = false;
};

struct step_outcome_t {
  std::uint32_t resolution = 0;  // the tree's resolution after the step; 0 if untouched by a null input
  bool touched = false;
  std::vector<contour_t> contours;
};

// Runs the step of the tool's triangles on tree with cells of grid_width
// (0: the tree's own). The tree's resolution grows to the step's where the
// tool is finer, and never shrinks.
step_outcome_t run_step(cube_tree_t& tree, const std::vector<tri_extension_t>& tool, double grid_width,
                        const step_options_t& options);

// A subtraction of an analytic stick tool at rest. An empty tool leaves the
// tree untouched, with a result of resolution 0.
step_outcome_t run_stick_step(cube_tree_t& tree, const stick_tool_t& tool, double grid_width, bool want_contours,
                              bool touch_counts);

}  // namespace cbtr
