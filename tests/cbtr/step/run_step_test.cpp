// Machining steps as a host makes them: volumes cut from and added to a
// block, through the cube_tree__ step family.

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "cbtr/cache/cell_triangles.h"
#include "cbtr/model/cube_tree_t.h"
#include "cbtr/step/contour_memo.h"
#include "cbtr/step/step_result_t.h"
#include "cbtr/substraction.h"
#include "geom/stl3d.h"
#include "soups.h"
#include "step_stock.h"
#include "surface_checks.h"

namespace {

using quvra_test::soup_t;
using quvra_test::stock_t;

double box_volume(const std::array<double, 6>& b) { return (b[3] - b[0]) * (b[4] - b[1]) * (b[5] - b[2]); }

// Volume that cells may lose or gain along the sharp edges of a box of size
// dx, dy, dz: half a cell width squared per unit of edge length.
double chamfer_bound(double w, double dx, double dy, double dz) { return 0.5 * w * w * 4 * (dx + dy + dz); }

const std::array<double, 6> block = {0.3, 0.2, 0.1, 10.7, 8.9, 6.35};

TEST(MachiningStep, BlockMinusBoxLosesThatVolumeWithinTheChamferBound) {
  const std::array<double, 6> pocket = {3.1, 2.2, 4.05, 7.3, 6.6, 9.0};  // through the top face
  const std::array<double, 6> inside = {3.1, 2.2, 2.05, 7.3, 6.6, 5.0};
  for (double w : {1.0, 0.5, 0.25}) {
    for (const auto& tool : {pocket, inside}) {
      stock_t stock(block, w);
      const double before = stock.volume();
      EXPECT_TRUE(stock.cut(tool, w));
      const auto c = stock.closure();
      EXPECT_EQ(c.open_lines, 0u) << "cell " << w;
      EXPECT_NEAR(c.volume_about_origin, c.volume_about_far_point, 1e-6 * before);
      const std::array<double, 6> overlap = {tool[0], tool[1], tool[2], tool[3], tool[4], std::min(tool[5], block[5])};
      EXPECT_NEAR(before - c.volume_about_origin, box_volume(overlap),
                  chamfer_bound(w, overlap[3] - overlap[0], overlap[4] - overlap[1], overlap[5] - overlap[2]))
          << "cell " << w;
    }
  }
}

TEST(MachiningStep, AddingTheToolBackRestoresTheVolume) {
  stock_t stock(block, 0.5);
  const double before = stock.volume();
  soup_t tool(quvra_test::box_soup(3.1, 2.2, 2.05, 7.3, 6.6, 5.0));
  substraction_t* s = cube_tree__substract_by_stl3d(stock.tree, tool.s, 0.5, false, false);
  EXPECT_LT(stock.volume(), before - 10);
  addition_t* a = cube_tree__add_by_stl3d(stock.tree, tool.s, 0.5, false, false);
  EXPECT_TRUE(addition__IsTouched(a));
  EXPECT_NEAR(stock.volume(), before, 1e-9 * before);
  EXPECT_EQ(stock.closure().open_lines, 0u);
  substraction__dtor(s);
  addition__dtor(a);
  // Eating the whole stock leaves an empty root.
  EXPECT_TRUE(stock.cut({-5, -5, -5, 20, 20, 20}, 0.5));
  ASSERT_NE(stock.tree->root.load(), nullptr);
  EXPECT_EQ(stock.tree->root.load()->kind, cbtr::kind_air);
  EXPECT_TRUE(cbtr::list_surface(*stock.tree).empty());
  EXPECT_FALSE(stock.cut({1, 1, 1, 2, 2, 2}, 0.5));
}

TEST(MachiningStep, OverlappingCutsAlongAPathLeaveAClosedSlotWithoutSlivers) {
  const double w = 0.25;
  stock_t stock(block, w);
  const double before = stock.volume();
  // A 2 x 2 tool moved in 0.3 steps along x cuts a slot from x 1 to 9.
  for (double x = 1.0; x + 2.0 <= 9.0 + 1e-9; x += 0.3) stock.cut({x, 3.3, 4.1, x + 2.0, 5.3, 8.0}, w);
  stock.cut({7.0, 3.3, 4.1, 9.0, 5.3, 8.0}, w);
  const auto c = stock.closure();
  EXPECT_EQ(c.open_lines, 0u);
  const std::array<double, 6> slot = {1.0, 3.3, 4.1, 9.0, 5.3, block[5]};
  EXPECT_NEAR(before - c.volume_about_origin, box_volume(slot), chamfer_bound(w, 8.0, 2.0, block[5] - 4.1));
}

TEST(MachiningStep, ContoursAreClosedPolygonsOnTheToolSurface) {
  stock_t stock(block, 0.5);
  const std::array<double, 6> tool = {3.1, 2.2, 4.05, 7.3, 6.6, 9.0};
  soup_t soup(quvra_test::box_soup(tool[0], tool[1], tool[2], tool[3], tool[4], tool[5]));
  substraction_t* s = cube_tree__substract_by_stl3d(stock.tree, soup.s, 0.5, true, false);
  const int32_t size = substraction__GetContactContoursBufSize(s);
  ASSERT_GT(size, 4);
  std::vector<unsigned char> buf(static_cast<std::size_t>(size));
  substraction__GetContactContours(s, buf.data());
  std::uint32_t polygons = 0;
  std::memcpy(&polygons, buf.data(), 4);
  ASSERT_GT(polygons, 10u);
  std::size_t at = 4;
  for (std::uint32_t p = 0; p < polygons; ++p) {
    std::uint32_t points = 0;
    std::memcpy(&points, buf.data() + at, 4);
    at += 4;
    EXPECT_GE(points, 3u);
    for (std::uint32_t i = 0; i < points; ++i, at += 24) {
      double q[3];
      std::memcpy(q, buf.data() + at, 24);
      bool on_face = false;
      for (int k = 0; k < 3; ++k) on_face |= std::abs(q[k] - tool[k]) < 1e-9 || std::abs(q[k] - tool[k + 3]) < 1e-9;
      EXPECT_TRUE(on_face) << q[0] << " " << q[1] << " " << q[2];
    }
  }
  EXPECT_EQ(at, static_cast<std::size_t>(size));
  // Floor and walls of the pocket inside the block, as far as cells see them.
  const double walls = 2 * (4.2 + 4.4) * (block[5] - 4.05), floor = 4.2 * 4.4;
  EXPECT_NEAR(substraction__GetContactContourArea(s), walls + floor, 0.2 * (walls + floor));
  substraction__dtor(s);
}

TEST(MachiningStep, StepsRememberTheMostContoursOfTheirKind) {
  // A ball cut at fine cells collects thousands of polygons; the memo of
  // subtractions rises to them and never falls, and additions keep theirs.
  const std::size_t additions = cbtr::expected_contours(false);
  stock_t stock({-5, -5, -5, 5, 5, 0.01}, 0.0625);
  soup_t tool(quvra_test::sphere_soup(3.0, 48, 48));
  substraction_t* s = cube_tree__substract_by_stl3d(stock.tree, tool.s, 0.0625, true, false);
  std::vector<unsigned char> buffer(static_cast<std::size_t>(substraction__GetContactContoursBufSize(s)));
  substraction__GetContactContours(s, buffer.data());
  std::int32_t count = 0;
  std::memcpy(&count, buffer.data(), sizeof count);
  const auto polygons = static_cast<std::size_t>(count);
  substraction__dtor(s);
  EXPECT_GT(polygons, 8192u) << "the cut must collect more polygons than the memo starts with";
  EXPECT_GE(cbtr::expected_contours(true), std::max<std::size_t>(8192, polygons));
  cbtr::note_contours(true, 1);
  EXPECT_GE(cbtr::expected_contours(true), polygons);
  EXPECT_EQ(cbtr::expected_contours(false), additions);
}

TEST(MachiningStep, NullToolOrTreeGivesAnUntouchedResult) {
  stock_t stock(block, 1);
  substraction_t* s = cube_tree__substract_by_cached_tris(stock.tree, nullptr, 1, true, true);
  ASSERT_NE(s, nullptr);
  EXPECT_FALSE(substraction__IsTouched(s));
  EXPECT_EQ(substraction__GetContactContoursBufSize(s), 4);
  unsigned char buf[4] = {9, 9, 9, 9};
  substraction__GetContactContours(s, buf);
  EXPECT_EQ(std::vector<unsigned char>(buf, buf + 4), (std::vector<unsigned char>{0, 0, 0, 0}));
  EXPECT_EQ(substraction__GetContactContourArea(s), 0.0);
  substraction__dtor(s);
  addition_t* a = cube_tree__add_by_cached_tris(nullptr, nullptr, 1, false, false);
  EXPECT_FALSE(addition__IsTouched(a));
  addition__dtor(a);
  substraction__dtor(nullptr);
  addition__dtor(nullptr);
}

TEST(MachiningStep, AWidthThatNamesNoCellLeavesTheStockAsItWas) {
  stock_t stock(block, 1);
  const double before = stock.volume();
  soup_t tool(quvra_test::box_soup(3.1, 2.2, 4.05, 7.3, 6.6, 9.0));
  for (double w : {-0.5, std::nan(""), HUGE_VAL}) {
    substraction_t* s = cube_tree__substract_by_stl3d(stock.tree, tool.s, w, false, false);
    EXPECT_FALSE(substraction__IsTouched(s)) << w;
    EXPECT_EQ(s->resolution(), 0u) << w;
    substraction__dtor(s);
    addition_t* a = cube_tree__add_by_stl3d(stock.tree, tool.s, w, false, false);
    EXPECT_FALSE(addition__IsTouched(a)) << w;
    addition__dtor(a);
  }
  EXPECT_EQ(cube_tree__get_grid_width(stock.tree), 1.0);
  EXPECT_EQ(stock.volume(), before);
  // Wider than the root: the step works in the root's cells, and the tree
  // keeps its own resolution.
  stock.cut({3.1, 2.2, 4.05, 7.3, 6.6, 9.0}, 1e9);
  EXPECT_EQ(cube_tree__get_grid_width(stock.tree), 1.0);
  EXPECT_EQ(stock.closure().open_lines, 0u);
  // A finer step raises the resolution for good.
  stock.cut({3, 3, 5, 4, 4, 9}, 0.25);
  EXPECT_EQ(cube_tree__get_grid_width(stock.tree), 0.25);
  stock.cut({5, 3, 5, 6, 4, 9}, 1);
  EXPECT_EQ(cube_tree__get_grid_width(stock.tree), 0.25);
}

// A step is touched when it changes the stock, or with touches counted when
// the tool meets its surface: tools in air, on faces inside cells (6.35,
// 2.2) and on cell faces (6.0, 10.0, 4.0), and a pocket cut twice.
TEST(MachiningStep, TouchedOnlyWhenTheStockChangesOrTouchesCount) {
  stock_t air(block, 0.5);
  const double before = air.volume();
  double area = -1;
  EXPECT_FALSE(air.cut({20, 20, 20, 22, 22, 22}, 0.5, true, true, &area));
  EXPECT_FALSE(air.cut({2, 2, 7, 4, 4, 9}, 0.5, true, true, &area));
  EXPECT_EQ(area, 0.0);
  EXPECT_EQ(air.volume(), before);
  const std::array<double, 6> on_lattice = {0.5, 0.0, 0.0, 10.0, 8.5, 6.0};
  const struct {
    std::array<double, 6> stock, tool;
  } faces[] = {
      {block, {2, 2, 6.35, 4, 4, 9}}, {on_lattice, {2, 2, 6.0, 4, 4, 9}}, {on_lattice, {10.0, 2, 2, 12, 4, 4}}};
  for (const auto& c : faces) {
    stock_t stock(c.stock, 0.5);
    EXPECT_FALSE(stock.cut(c.tool, 0.5, false, false)) << c.tool[0] << " " << c.tool[2];
    EXPECT_TRUE(stock.cut(c.tool, 0.5, false, true)) << c.tool[0] << " " << c.tool[2];
  }
  for (const std::array<double, 6>& pocket :
       {std::array<double, 6>{2.0, 2.0, 4.0, 6.0, 6.0, 9.0}, std::array<double, 6>{2.2, 2.2, 4.05, 6.2, 6.2, 9.0}}) {
    stock_t stock(block, 0.5);
    ASSERT_TRUE(stock.cut(pocket, 0.5));
    const double after_first = stock.volume();
    EXPECT_FALSE(stock.cut(pocket, 0.5)) << pocket[2];
    EXPECT_NEAR(stock.volume(), after_first, 1e-9 * after_first);
    EXPECT_EQ(stock.closure().open_lines, 0u);
  }
}

TEST(MachiningStep, AToolThatLeavesAFaceAsItWasLeavesItsCellsAsTheyWere) {
  // The box stands on the top face: its walls cross the face's large leaves,
  // which are split for a closer look and then found unchanged.
  stock_t stock(block, 0.25);
  const std::size_t leaves = stock.leaves();
  EXPECT_FALSE(stock.cut({3.1, 2.2, block[5], 7.3, 6.6, 9.0}, 0.25));
  EXPECT_EQ(stock.leaves(), leaves);
  // A cut that does take material splits only where it cut.
  EXPECT_TRUE(stock.cut({3.1, 2.2, 5.2, 7.3, 6.6, 9.0}, 0.25));
  EXPECT_GT(stock.leaves(), leaves);
  EXPECT_EQ(stock.closure().open_lines, 0u);
}

TEST(MachiningStep, AToolWhoseRoofStaysAboveAFloorStillTakesTheFloorItHolds) {
  // The roof's ridge crosses the floor's large leaves without reaching down
  // to the floor, but the floor lies inside the tool.
  const double w = 0.5;
  stock_t stock(block, w);
  stock.cut({3.1, 2.2, 4.05, 7.3, 6.6, 9.0}, w);
  const double before = stock.volume();
  soup_t tool(quvra_test::gable_soup(3.5, 2.6, 1.0, 6.9, 6.2, 4.2, 4.4));
  substraction_t* s = cube_tree__substract_by_stl3d(stock.tree, tool.s, w, false, false);
  EXPECT_TRUE(substraction__IsTouched(s));
  substraction__dtor(s);
  const auto c = stock.closure();
  EXPECT_EQ(c.open_lines, 0u);
  EXPECT_NEAR(before - c.volume_about_origin, box_volume({3.5, 2.6, 1.0, 6.9, 6.2, 4.05}),
              chamfer_bound(w, 3.4, 3.6, 3.05));
}

}  // namespace
