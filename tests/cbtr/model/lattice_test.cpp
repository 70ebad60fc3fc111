#include "cbtr/model/lattice.h"

#include <gtest/gtest.h>

#include <cmath>

#include "cbtr/model/cell_numbering.h"
#include "cbtr/model/cube_node_t.h"

namespace {

using namespace cbtr;

TEST(GridWidth, PowersOfTwoFromTheWorkspaceDown) {
  EXPECT_EQ(grid_width(0), 131072.0);
  EXPECT_EQ(grid_width(1), 65536.0);
  EXPECT_EQ(grid_width(17), 1.0);
  EXPECT_EQ(grid_width(26), 0.001953125);
}

TEST(ResolutionFromWidth, ExactPowersOfTwoDoNotRoundUp) {
  EXPECT_EQ(resolution_from_width(1.0), 17);
  EXPECT_EQ(resolution_from_width(1.0000001), 17);
  EXPECT_EQ(resolution_from_width(0.99), 18);
  EXPECT_EQ(resolution_from_width(0.5), 18);
  EXPECT_EQ(resolution_from_width(0.1), 21);
  EXPECT_EQ(resolution_from_width(std::ldexp(1.0, -9)), 26);
  EXPECT_EQ(resolution_from_width(1e-6), 26);
  EXPECT_EQ(resolution_from_width(0.0), 26);
  for (int r = 1; r <= 26; ++r) EXPECT_EQ(resolution_from_width(grid_width(r)), r) << r;
}

TEST(Lattice, CentreMapsToTheOriginAndEndsToTheWorkspaceFaces) {
  EXPECT_EQ(lattice_to_model(lattice_centre), 0.0);
  EXPECT_EQ(lattice_to_model(0), -65536.0);
  EXPECT_EQ(lattice_to_model(1u << 27), 65536.0);
  EXPECT_EQ(lattice_to_model(lattice_centre + 1024), 1.0);
}

TEST(Lattice, ChildrenTileTheirParentAtTheNextDepth) {
  for (int d : {0, 5, 25}) {
    const std::uint32_t c = lattice_centre;  // the root's centre is a centre at any depth's ancestor
    std::uint32_t centre = c;
    for (int k = 0; k < d; ++k) centre = child_centre(centre, k, k % 2 == 0);
    ASSERT_EQ(depth_of_centre(centre), d);
    const std::uint32_t lo = child_centre(centre, d, false);
    const std::uint32_t hi = child_centre(centre, d, true);
    EXPECT_EQ(depth_of_centre(lo), d + 1);
    EXPECT_EQ(depth_of_centre(hi), d + 1);
    EXPECT_EQ(centre - lo, half_width(d + 1));
    EXPECT_EQ(hi - centre, half_width(d + 1));
  }
}

TEST(Lattice, CellBoxOfTheFinestCellIsTwoStepsWide) {
  std::uint32_t c = lattice_centre;
  for (int d = 0; d < max_depth; ++d) c = child_centre(c, d, true);
  const cube_node_t node({}, c, c, c);
  ASSERT_EQ(node.depth(), max_depth);
  const auto box = cell_box(node);
  EXPECT_EQ(box[3] - box[0], grid_width(26));
  EXPECT_EQ(box[0], lattice_to_model(c - 1));
}

TEST(CellNumbering, EdgesJoinCornersThatDifferOnlyOnTheirAxis) {
  int seen[8][8] = {};
  for (int e = 0; e < 12; ++e) {
    const int lo = edge_low_corner(e), hi = edge_high_corner(e);
    EXPECT_EQ(lo ^ hi, 1 << edge_axis(e));
    EXPECT_EQ(lo & (1 << edge_axis(e)), 0);
    ++seen[lo][hi];
  }
  for (auto& row : seen)
    for (int n : row) EXPECT_LE(n, 1);
  EXPECT_EQ(edge_low_corner(0), 0);
  EXPECT_EQ(edge_low_corner(4), 0);
  EXPECT_EQ(edge_low_corner(8), 0);
}

TEST(CellNumbering, EdgeCodesOfCornerWords) {
  const std::uint32_t word = with_corner(corners_all_air, 0, corner_solid);
  EXPECT_EQ(edge_code(word, 0), edge_code_low_solid);
  EXPECT_EQ(edge_code(with_corner(corners_all_air, 1, corner_solid), 0), edge_code_high_solid);
  EXPECT_EQ(edge_code(corners_all_air, 7), edge_code_air);
  EXPECT_EQ(edge_code(corners_all_solid, 7), edge_code_solid);
  EXPECT_EQ(inverted_corners(corners_all_air), corners_all_solid);
  EXPECT_EQ(solid_corner_mask(word), 1);
  EXPECT_EQ(solid_corner_mask(corners_all_solid), 255);
}

}  // namespace
