// Splitting stock leaves from their own tips, merging tool leaves into them,
// and deciding whether a merge at a cell's size is faithful.

#include "cbtr/step/leaf_split.h"

#include <gtest/gtest.h>

#include <cmath>

#include "cbtr/build/build_cube_tree.h"
#include "cbtr/cache/cell_triangles.h"
#include "cbtr/model/tree_walk.h"
#include "cbtr/step/leaf_merge.h"
#include "soups.h"
#include "surface_checks.h"

namespace {

using namespace cbtr;

std::unique_ptr<cube_tree_t> build(const std::vector<geom::stl_tri_t>& soup, double w) {
  geom::stl3d_t s;
  s.tris = soup;
  return build_cube_tree(s, w, nullptr, nullptr);
}

std::vector<quvra_test::triangle3> surface(const cube_tree_t& tree) {
  std::vector<quvra_test::triangle3> out;
  for (const cube_tri_t& t : list_surface(tree)) out.push_back({t.v[0], t.v[1], t.v[2]});
  return out;
}

std::vector<std::shared_ptr<cube_node_t>> leaves_of(const cube_tree_t& tree) {
  std::vector<std::shared_ptr<cube_node_t>> out;
  std::function<void(const std::shared_ptr<cube_node_t>&)> walk = [&](const std::shared_ptr<cube_node_t>& n) {
    if (n->kind & kind_leaf) out.push_back(n);
    for (const auto& c : snapshot_children(*n))
      if (c) walk(c);
  };
  if (const auto root = tree.root.load()) walk(root);
  return out;
}

// Splits every leaf that can be split; answers how many could.
std::size_t split_all(const cube_tree_t& tree) {
  std::size_t split = 0;
  for (const auto& leaf : leaves_of(tree)) split += split_leaf(leaf, corner_air);
  return split;
}

TEST(LeafSplit, FlatFacesSplitIntoChildrenWithTheSameSurface) {
  const auto tree = build(quvra_test::box_soup(0.3, 0.2, 0.1, 10.7, 8.9, 6.35), 0.5);
  const double before = quvra_test::enclosed_volume(surface(*tree), {0, 0, 0});
  const std::size_t leaves = leaves_of(*tree).size();
  EXPECT_GT(split_all(*tree), leaves / 2);
  const auto after = surface(*tree);
  const auto c = quvra_test::check_closure(after);
  EXPECT_EQ(c.open_lines, 0u);
  EXPECT_NEAR(c.volume_about_origin, before, 1e-9 * before);
  // About a far point the sum of large terms rounds more.
  EXPECT_NEAR(c.volume_about_far_point, before, 1e-7 * before);
}

TEST(LeafSplit, CurvedSurfacesStayClosedAndKeepTheirVolume) {
  const auto tree = build(quvra_test::sphere_soup(10, 48, 96), 1.25);
  const double before = quvra_test::enclosed_volume(surface(*tree), {0, 0, 0});
  EXPECT_GT(split_all(*tree), 0u);
  const auto c = quvra_test::check_closure(surface(*tree));
  EXPECT_EQ(c.open_lines, 0u);
  EXPECT_NEAR(c.volume_about_origin, c.volume_about_far_point, 1e-6 * before);
  EXPECT_NEAR(c.volume_about_origin, before, 0.01 * before);
}

TEST(LeafSplit, SplitThenCollapseGivesTheLeafBack) {
  const auto tree = build(quvra_test::box_soup(0.3, 0.2, 0.1, 10.7, 8.9, 6.35), 0.5);
  for (const auto& leaf : leaves_of(*tree)) {
    const std::uint32_t word = leaf->corners;
    if (!split_leaf(leaf, corner_air)) continue;
    EXPECT_EQ(leaf->kind, kind_branch);
    EXPECT_TRUE(try_collapse(*leaf, corner_air, snapshot_children(*leaf)));
    EXPECT_EQ(leaf->kind, kind_leaf);
    EXPECT_EQ(leaf->corners, word);
    EXPECT_EQ(leaf->children.load(), nullptr);
  }
}

TEST(LeafSplit, SaddleFacesAndFinestCellsDoNotSplit) {
  // Corners 0 and 3 solid on the face z = low: a saddle on that face.
  const cell_t cell = root_cell.child(0).child(7);
  std::uint32_t word = corners_all_air;
  word = with_corner(with_corner(word, 0, corner_solid), 3, corner_solid);
  cube_node_t::tips_t tips;
  for (int e = 0; e < 12; ++e) {
    const int a = edge_axis(e);
    tips[e] = edge_has_crossing(edge_code(word, e)) ? lattice_to_model(cell.centre[a]) + 0.1 : no_tip;
  }
  EXPECT_FALSE(plan_split(cell, word, tips, corner_air).has_value());
}

std::unique_ptr<cube_node_t> leaf_with(std::uint32_t word, std::array<double, 12> tips) {
  auto n = std::make_unique<cube_node_t>(std::weak_ptr<cube_node_t>{}, lattice_centre, lattice_centre, lattice_centre);
  n->kind = kind_leaf;
  n->corners = word;
  for (int e = 0; e < 12; ++e) n->tips[e] = tips[e];
  return n;
}

// Corners with low x solid (x-plane at tip on the four x edges 0..3).
std::uint32_t low_x_solid() {
  std::uint32_t w = 0;
  for (int k = 0; k < 8; ++k) w = with_corner(w, k, (k & 1) ? corner_air : corner_solid);
  return w;
}

std::array<double, 12> x_tips(double t) {
  std::array<double, 12> tips;
  tips.fill(no_tip);
  for (int e = 0; e < 4; ++e) tips[e] = t;
  return tips;
}

TEST(LeafMerge, ToolCutsTheSolidPartBackOrEmptiesIt) {
  // Stock solid on [lo, 2]; a tool solid on [1, hi] cuts it back to [lo, 1].
  auto stock = leaf_with(low_x_solid(), x_tips(2));
  const auto tool = leaf_with(inverted_corners(low_x_solid()), x_tips(1));
  EXPECT_TRUE(merge_tool_leaf(*stock, *tool, true));
  EXPECT_EQ(stock->tips[0], 1.0);
  EXPECT_EQ(stock->corners, low_x_solid());
  // A tool solid on [3, hi] stays clear of it.
  const auto clear = leaf_with(inverted_corners(low_x_solid()), x_tips(3));
  EXPECT_FALSE(merge_tool_leaf(*stock, *clear, true));
  EXPECT_EQ(stock->tips[0], 1.0);
  // A tool solid on [lo, 5] takes it all: the corners become air.
  const auto all = leaf_with(low_x_solid(), x_tips(5));
  EXPECT_TRUE(merge_tool_leaf(*stock, *all, true));
  EXPECT_EQ(stock->corners, corners_all_air);
  EXPECT_TRUE(std::isnan(stock->tips[0].load()));
}

TEST(LeafMerge, EqualTipsCountOnlyWhenTouchesCount) {
  const auto tool = leaf_with(inverted_corners(low_x_solid()), x_tips(2));
  auto counted = leaf_with(low_x_solid(), x_tips(2));
  EXPECT_TRUE(merge_tool_leaf(*counted, *tool, true));
  auto ignored = leaf_with(low_x_solid(), x_tips(2));
  EXPECT_FALSE(merge_tool_leaf(*ignored, *tool, false));
}

TEST(LeafMerge, ComparisonTellsMergeSkipOrSplit) {
  const auto stock = leaf_with(low_x_solid(), x_tips(2));
  // Tool on the air side beyond the stock tip: takes nothing.
  const auto beyond = leaf_with(inverted_corners(low_x_solid()), x_tips(3));
  EXPECT_EQ(compare_leaf_with_tool(stock->corners, stock->tips, beyond->corners, beyond->tips), 2);
  // Tool overlapping the stock from the air side: a merge is right.
  const auto into = leaf_with(inverted_corners(low_x_solid()), x_tips(1));
  EXPECT_EQ(compare_leaf_with_tool(stock->corners, stock->tips, into->corners, into->tips), 1);
  // Both solid at the same end, the tool shorter: too coarse to tell.
  const auto shorter = leaf_with(low_x_solid(), x_tips(1));
  EXPECT_EQ(compare_leaf_with_tool(stock->corners, stock->tips, shorter->corners, shorter->tips), 3);
}

}  // namespace
