#pragma once

// The compare of a stock with a design part, stage by stage:
//   1. snap the design to the lattice (design_t),
//   2. sort it into a search octree (tri_tree_t, split down to the stock's
//      resolution while a node holds more than a few triangles),
//   3. split the stock's surface leaves down to its resolution
//      (refine_surface),
//   4. measure every leaf (distance_probe_t) in tasks over subtrees, at most
//      `workers` at once, and hand each distance to the host's function.

#include <memory>

#include "cbtr/model/cube_tree_t.h"
#include "common/progress_monitor_t.h"
#include "geom/stl3d_t.h"

namespace cbtr {

using compare_fn_t = void (*)(std::shared_ptr<cube_node_t>& node, double distance, void* ctx);

struct compare_request_t {
  double max_distance;
  double resolution;
  compare_fn_t fn;
  void* ctx;
  common::progress_monitor_t* monitor;  // may be null
  unsigned workers;                     // tasks at once, at least 1
};

void run_compare(cube_tree_t& tree, const geom::stl3d_t& design, const compare_request_t& request);

// max(1, hardware threads).
unsigned compare_workers();

}  // namespace cbtr
