#include "cbtr/compare/refine_surface.h"

#include "cbtr/step/leaf_split.h"

namespace cbtr {

namespace {

// A point of a split that lies exactly on the surface counts as solid.
constexpr std::uint32_t on_surface_solid = 2;

void refine(const std::shared_ptr<cube_node_t>& node, int resolution) {
  if (node->kind & 3) return;
  if ((node->kind & kind_leaf) && !(node->depth() < resolution && split_leaf(node, on_surface_solid))) return;
  for (const std::shared_ptr<cube_node_t>& child : snapshot_children(*node))
    if (child) refine(child, resolution);
}

}  // namespace

void refine_surface(cube_tree_t& tree) {
  if (const std::shared_ptr<cube_node_t> root = tree.root.load()) refine(root, static_cast<int>(tree.resolution));
}

}  // namespace cbtr
