#pragma once

// The signed distance from one stock cell to the design: the search for the
// nearest design triangles in the design's octree, then their exact order
// and the side.
//
// A cell is sampled at the surface point (a finite tip) nearest the mean of
// its surface points, snapped to the lattice: a point of the stock's own
// surface, central in the cell, so that a stock that matches the design
// measures zero even in cells that hold an edge of it. A cell without a
// finite tip is sampled at its centre. Nodes are visited
// nearest first and pruned against the best squared distance so far; the
// rounded distances only prune and gather near ties, which are then ordered
// exactly, so that triangles meeting at an edge or a corner tie as they do
// in exact arithmetic.
//
// One probe per thread: it keeps scratch space of one word per triangle.

#include <cstdint>
#include <vector>

#include "cbtr/collision/tri_tree_t.h"
#include "cbtr/compare/nearest_feature.h"
#include "cbtr/model/cube_node_t.h"

namespace cbtr {

class distance_probe_t {
 public:
  // max_distance and resolution in model units: triangles farther than
  // max_distance are not seen, and within resolution a point is not signed.
  distance_probe_t(const design_t& design, const tri_tree_t& tree, double max_distance, double resolution);

  // Positive outside the design, negative inside, NaN when unknown.
  double distance(const cube_node_t& leaf);

  // The same from a lattice point.
  double distance_from(const lattice_point_t& q);

 private:
  void _search(const tri_node_t& node, const std::array<double, 3>& q, const lattice_point_t& qi);
  void _take(std::uint32_t tri, const lattice_point_t& q);
  std::vector<feature_hit_t> _nearest() const;

  const design_t& _design;
  const tri_tree_t& _tree;
  double _max_d2;  // squared lattice steps
  double _resolution_d2;
  double _best = 0;
  std::vector<feature_hit_t> _hits;
  std::vector<std::uint32_t> _stamp;  // query number that last took each triangle
  std::uint32_t _query = 0;
};

// The lattice point at which leaf is measured.
lattice_point_t sample_point(const cube_node_t& leaf);

}  // namespace cbtr
