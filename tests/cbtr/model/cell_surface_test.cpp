#include "cbtr/model/cell_surface.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace cbtr;

// A cell of depth 16 (width 2 model units) with its centre at the origin's
// high child chain, so that its box is easy to state.
std::shared_ptr<cube_node_t> make_cell(int depth, bool high = true) {
  std::uint32_t c = lattice_centre;
  for (int d = 0; d < depth; ++d) c = child_centre(c, d, high);
  return std::make_shared<cube_node_t>(std::weak_ptr<cube_node_t>{}, c, c, c);
}

void set_midpoint_tips(cube_node_t& n) {
  const auto box = cell_box(n);
  for (int e = 0; e < 12; ++e) {
    const int a = edge_axis(e);
    n.tips[e] = edge_has_crossing(edge_code(n.corners, e)) ? (box[a] + box[a + 3]) / 2 : no_tip;
  }
}

TEST(LeafTriangles, OneSolidCornerGivesOneTriangleThroughItsEdgeMidpoints) {
  auto leaf = make_cell(16);
  leaf->kind = kind_leaf;
  leaf->corners = with_corner(corners_all_air, 0, corner_solid);
  set_midpoint_tips(*leaf);
  const auto tris = leaf_triangles(*leaf);
  ASSERT_EQ(tris.size(), 1u);
  const auto box = cell_box(*leaf);
  const double mid = (box[0] + box[3]) / 2;
  // Edges 0, 4, 8 in that order: on the x, y and z edges leaving corner 0.
  EXPECT_EQ(tris[0].v[0], (std::array<double, 3>{mid, box[1], box[2]}));
  EXPECT_EQ(tris[0].v[1], (std::array<double, 3>{box[0], mid, box[2]}));
  EXPECT_EQ(tris[0].v[2], (std::array<double, 3>{box[0], box[1], mid}));
  EXPECT_EQ(tris[0].node, leaf.get());
  EXPECT_EQ(tris[0].index, 0);
  EXPECT_TRUE(std::isnan(tris[0].normal[0]));
}

TEST(LeafTriangles, TriangleCollapsedIntoACornerIsDropped) {
  auto leaf = make_cell(16);
  leaf->corners = with_corner(corners_all_air, 0, corner_solid);
  set_midpoint_tips(*leaf);
  const auto box = cell_box(*leaf);
  // All three tips at corner 0 itself: the triangle has no area.
  leaf->tips[0] = box[0];
  leaf->tips[4] = box[1];
  leaf->tips[8] = box[2];
  EXPECT_TRUE(leaf_triangles(*leaf).empty());
}

TEST(LeafTriangles, NonFiniteTipsSkipTheirTriplesAndKeepTheRowPosition) {
  auto leaf = make_cell(16);
  // Corners 0 and 1 solid: two triangles over edges 6 4 8 and 9 6 8.
  leaf->corners = with_corner(with_corner(corners_all_air, 0, corner_solid), 1, corner_solid);
  set_midpoint_tips(*leaf);
  ASSERT_EQ(leaf_triangles(*leaf).size(), 2u);
  leaf->tips[4] = INFINITY;  // an infinite edge cut
  const auto tris = leaf_triangles(*leaf);
  ASSERT_EQ(tris.size(), 1u);
  EXPECT_EQ(tris[0].index, 1);
}

TEST(BranchCornerWord, NullChildrenTakeTheStateOfTheCentre) {
  child_snapshot_t kids;
  EXPECT_FALSE(branch_corner_word(kids).has_value());

  // Child 3 is a leaf whose corner 4 (the branch centre) is solid and whose
  // corner 3 is air; the other children are null, so uniform solid.
  kids[3] = make_cell(16);
  kids[3]->corners = with_corner(corners_all_solid, 3, corner_air);
  const auto word = branch_corner_word(kids);
  ASSERT_TRUE(word.has_value());
  EXPECT_EQ(*word, with_corner(corners_all_solid, 3, corner_air));
}

TEST(BranchCornerWord, FullBranchTakesEachChildsOuterCorner) {
  child_snapshot_t kids;
  std::uint32_t expected = 0;
  for (int k = 0; k < 8; ++k) {
    kids[k] = make_cell(16);
    const std::uint32_t state = k % 3 == 0 ? corner_solid : corner_air;
    kids[k]->corners = with_corner(corners_all_air, k, state);
    expected = with_corner(expected, k, state);
  }
  EXPECT_EQ(branch_corner_word(kids), expected);
}

TEST(BranchSummary, TipsComeFromTheChildHalfEdgeThatHasTheCrossing) {
  auto branch = make_cell(15);
  // A plane x = c + w/4 inside the high-x children: corners with low x solid.
  std::uint32_t word = 0;
  for (int k = 0; k < 8; ++k) word = with_corner(word, k, (k & 1) ? corner_air : corner_solid);
  branch->corners = word;
  child_snapshot_t kids;
  const double plane = lattice_to_model(branch->x + half_width(16) / 2);
  for (int k = 1; k < 8; k += 2) {  // high-x children hold the crossing
    kids[k] = make_cell(16);
    kids[k]->corners = word;
    for (int e : {0, 1, 2, 3}) kids[k]->tips[e] = plane;
  }
  for (int k = 0; k < 8; k += 2) {  // low-x children are uniform solid
    kids[k] = make_cell(16);
    kids[k]->corners = corners_all_solid;
  }
  summarise_branch_tips(*branch, kids);
  for (int e = 0; e < 12; ++e) {
    if (e < 4)
      EXPECT_EQ(branch->tips[e], plane) << e;
    else
      EXPECT_TRUE(std::isnan(branch->tips[e].load())) << e;
  }
}

TEST(BranchSummary, CrossingBetweenUniformChildrenFallsOnTheSolidSide) {
  auto branch = make_cell(15);
  branch->corners = with_corner(corners_all_air, 0, corner_solid);
  child_snapshot_t kids;
  kids[0] = make_cell(16);
  kids[0]->corners = corners_all_solid;  // half edge 0 uniform solid
  kids[1] = make_cell(16);
  kids[1]->corners = corners_all_air;  // half edge 0 uniform air
  summarise_branch_tips(*branch, kids);
  EXPECT_EQ(branch->tips[0], lattice_to_model(branch->x - half_width(15) / 2));
}

}  // namespace
