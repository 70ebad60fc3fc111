#pragma once

// The stock: a pointer octree over the fixed lattice, down to cells of depth
// `resolution`. It keeps no triangles: the surface is derived from the
// cells' corner states and tips whenever it is needed.
//
// Steps that change the tree (subtraction, addition, fly-piece removal) run
// one at a time on a tree, while the display thread may read it at any
// moment through counted snapshots of root and children.

#include <atomic>
#include <cstdint>
#include <memory>

#include "cbtr/cache/recent_depths_t.h"
#include "cbtr/model/cube_node_t.h"
#include "common/relaxed_t.h"
#include "disp/IDisplayee.h"

namespace cbtr {

class cube_tree_t : public disp::IDisplayee {
 public:
  // An empty stock (null root) with cells down to depth resolution; 0 means
  // not set.
  explicit cube_tree_t(std::uint32_t resolution_depth = 0) : resolution(resolution_depth) {}
  virtual ~cube_tree_t();
  cube_tree_t(const cube_tree_t&) = delete;
  cube_tree_t& operator=(const cube_tree_t&) = delete;

  // Edge length of the finest cells, in model units.
  double grid_width() const { return cbtr::grid_width(resolution); }

  // Grows box by the solid part of every leaf: its valid tip points and its
  // solid corners. Uniform cells are not visited: a closed stock's extent is
  // reached by its leaves. Nothing for an empty tree.
  void expand_to_box3d(geom::box3d* box) override;
  // The same box with its corners moved by mat, merged into box.
  void expand_to_box3d(geom::box3d* box, const geom::mat4d* mat) override;

  // The cells at the depth the view affords, each through its cached
  // drawing; see cache/draw_tree.
  using disp::IDisplayee::display;
  void display(disp::bind* b) override;

  // Raised by a step while a display thread may read it.
  common::relaxed_t<std::uint32_t> resolution = 0;
  std::atomic<std::shared_ptr<cube_node_t>> root;
  recent_depths_t recent_depths;  // of the views that draw this tree
};

// Writes the owner into the parent link of each of node's children; done
// once after a subtree is installed under its shared owner.
void adopt_children(const std::shared_ptr<cube_node_t>& node);

}  // namespace cbtr
