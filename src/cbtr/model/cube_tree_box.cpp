#include <cmath>

#include "cbtr/model/cube_tree_t.h"
#include "cbtr/model/tree_walk.h"

namespace cbtr {

namespace {

// Corner k (bit 0 high in x, bit 1 in y, bit 2 in z) of a box given as
// minimum x, y, z, then maximum x, y, z.
geom::vec3d box_corner(const std::array<double, 6>& b, int k) {
  return {b[k & 1 ? 3 : 0], b[k & 2 ? 4 : 1], b[k & 4 ? 5 : 2]};
}

// A face with a solid corner bounds the stock on its axis; growing by the
// solid corners themselves reaches the same sides on every axis.
void expand_by_leaf(const cube_node_t& leaf, geom::box3d& box) {
  for (int e = 0; e < 12; ++e) {
    if (!std::isfinite(leaf.tips[e].load())) continue;
    const std::array<double, 3> p = tip_point(leaf, e);
    box.expand(geom::vec3d{p[0], p[1], p[2]});
  }
  const std::array<double, 6> cell = cell_box(leaf);
  const std::uint32_t word = leaf.corners;
  for (int k = 0; k < 8; ++k)
    if (corner_of(word, k) == corner_solid) box.expand(box_corner(cell, k));
}

}  // namespace

void cube_tree_t::expand_to_box3d(geom::box3d* box) {
  for_each_leaf(*this, [box](const cube_node_t& leaf) { expand_by_leaf(leaf, *box); });
}

void cube_tree_t::expand_to_box3d(geom::box3d* box, const geom::mat4d* mat) {
  geom::box3d own;
  expand_to_box3d(&own);
  box->expand(geom::moved_box(own, *mat));
}

}  // namespace cbtr
