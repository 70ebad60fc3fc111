#include <gtest/gtest.h>

#include <cmath>

#include "cbtr/cube_tree.h"
#include "cbtr/model/cube_tree_t.h"
#include "hand_trees.h"

namespace {

using namespace cbtr;

constexpr double inf = INFINITY;

// A depth-17 cell (width 1) with corner 0 solid and its three tips a
// quarter of the way along: the solid part reaches from corner 0 to them.
std::unique_ptr<cube_tree_t> corner_tree(double& x0, double& y0, double& z0) {
  auto tree = quvra_test::tree_with_root(17, kind_branch, 0);
  std::shared_ptr<cube_node_t> node = tree->root.load();
  for (int d = 0; d < 16; ++d) node = quvra_test::add_child(node, 7, kind_branch, 0);
  const auto leaf = quvra_test::add_child(node, 7, kind_leaf, quvra_test::solid_corners({0}));
  quvra_test::place_tips(*leaf, 0.25);
  const auto box = cell_box(*leaf);
  x0 = box[0];
  y0 = box[1];
  z0 = box[2];
  return tree;
}

TEST(CubeTreeBox, LeafGrowsTheBoxByItsSolidCornersAndTipPoints) {
  double x0, y0, z0;
  const auto tree = corner_tree(x0, y0, z0);
  double box[6] = {inf, inf, inf, -inf, -inf, -inf};
  cube_tree__ExpandToBox3d(tree.get(), box);
  const double want[6] = {x0, y0, z0, x0 + 0.25, y0 + 0.25, z0 + 0.25};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(box[i], want[i]) << i;
}

TEST(CubeTreeBox, OnlyGrowsWhatTheCallerPasses) {
  double x0, y0, z0;
  const auto tree = corner_tree(x0, y0, z0);
  double box[6] = {x0 - 5, y0 + 0.1, z0 + 0.1, x0 + 5, y0 + 0.2, z0 + 0.1};
  cube_tree__ExpandToBox3d(tree.get(), box);
  const double want[6] = {x0 - 5, y0, z0, x0 + 5, y0 + 0.25, z0 + 0.25};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(box[i], want[i]) << i;
}

TEST(CubeTreeBox, EmptyTreesAndUniformCellsAddNothing) {
  const double empty[6] = {inf, inf, inf, -inf, -inf, -inf};
  double box[6] = {inf, inf, inf, -inf, -inf, -inf};
  cube_tree_t no_cells(5);
  cube_tree__ExpandToBox3d(&no_cells, box);
  const auto solid = quvra_test::tree_with_root(5, kind_solid, corners_all_solid);
  cube_tree__ExpandToBox3d(solid.get(), box);
  const double shift[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 7, 8, 9, 1};
  cube_tree__ExpandToBox3dByMat(solid.get(), box, shift);
  cube_tree__ExpandToBox3d(nullptr, box);
  for (int i = 0; i < 6; ++i) EXPECT_EQ(box[i], empty[i]) << i;
}

TEST(CubeTreeBox, MatrixMovesTheCornersOfTheTreesBox) {
  double x0, y0, z0;
  const auto tree = corner_tree(x0, y0, z0);
  // A quarter turn about z (x -> y, y -> -x), then a shift of (10, 20, 30).
  const double turn[16] = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 10, 20, 30, 1};
  double box[6] = {inf, inf, inf, -inf, -inf, -inf};
  cube_tree__ExpandToBox3dByMat(tree.get(), box, turn);
  const double want[6] = {10 - (y0 + 0.25), 20 + x0, 30 + z0, 10 - y0, 20 + x0 + 0.25, 30 + z0 + 0.25};
  for (int i = 0; i < 6; ++i) EXPECT_DOUBLE_EQ(box[i], want[i]) << i;
}

}  // namespace
