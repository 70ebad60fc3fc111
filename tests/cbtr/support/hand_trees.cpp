#include "hand_trees.h"

#include "cbtr/model/cell_surface.h"

namespace quvra_test {

using namespace cbtr;

std::shared_ptr<cube_node_t> add_child(const std::shared_ptr<cube_node_t>& parent, int c, std::int32_t kind,
                                       std::uint32_t corners) {
  std::shared_ptr<cube_node_t::children_t> children = parent->children.load();
  if (!children) {
    children = std::make_shared<cube_node_t::children_t>();
    parent->children.store(children);
  }
  const int d = parent->depth();
  auto child = std::make_shared<cube_node_t>(parent, child_centre(parent->x, d, c & 1),
                                             child_centre(parent->y, d, c & 2), child_centre(parent->z, d, c & 4));
  child->kind = kind;
  child->corners = corners;
  (*children)[c].store(child);
  return child;
}

void place_tips(cube_node_t& node, double t) {
  const std::array<double, 6> box = cell_box(node);
  for (int e = 0; e < 12; ++e) {
    const int a = edge_axis(e);
    node.tips[e] = edge_has_crossing(edge_code(node.corners, e)) ? box[a] + t * (box[a + 3] - box[a]) : no_tip;
  }
}

std::uint32_t solid_corners(std::initializer_list<int> corners) {
  std::uint32_t word = corners_all_air;
  for (int k : corners) word = with_corner(word, k, corner_solid);
  return word;
}

void summarise(cube_node_t& branch) {
  const child_snapshot_t children = snapshot_children(branch);
  if (const auto word = branch_corner_word(children)) branch.corners = *word;
  summarise_branch_tips(branch, children);
}

std::unique_ptr<cube_tree_t> tree_with_root(std::uint32_t resolution, std::int32_t kind, std::uint32_t corners) {
  auto tree = std::make_unique<cube_tree_t>(resolution);
  auto root =
      std::make_shared<cube_node_t>(std::weak_ptr<cube_node_t>{}, lattice_centre, lattice_centre, lattice_centre);
  root->kind = kind;
  root->corners = corners;
  tree->root.store(root);
  return tree;
}

std::unique_ptr<cube_tree_t> mixed_tree() {
  auto tree = tree_with_root(2, kind_branch, 0);
  const std::shared_ptr<cube_node_t> root = tree->root.load();
  place_tips(*add_child(root, 0, kind_leaf, solid_corners({0, 7})), 0.25);
  add_child(root, 1, kind_air, corners_all_air);
  add_child(root, 2, kind_solid, corners_all_solid);
  const auto inner = add_child(root, 5, kind_branch, 0);
  place_tips(*add_child(inner, 0, kind_leaf, solid_corners({0, 1, 2})), 0.75);
  place_tips(*add_child(inner, 7, kind_leaf, solid_corners({3, 7})), 0.5);
  summarise(*inner);
  add_child(root, 6, kind_branch, corners_all_solid);
  place_tips(*add_child(root, 7, kind_leaf, solid_corners({6})), 0.125);
  summarise(*root);
  return tree;
}

std::unique_ptr<cube_tree_t> full_tree() {
  auto tree = tree_with_root(2, kind_branch, 0);
  const std::shared_ptr<cube_node_t> root = tree->root.load();
  for (int c = 0; c < 8; ++c) {
    const auto branch = add_child(root, c, kind_branch, 0);
    for (int g = 0; g < 8; ++g) place_tips(*add_child(branch, g, kind_leaf, solid_corners({g})), 0.5);
    summarise(*branch);
  }
  summarise(*root);
  return tree;
}

}  // namespace quvra_test
