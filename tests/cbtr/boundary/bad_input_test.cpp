// What a host hands the stock that it cannot mean is refused at the
// boundary: far or broken coordinates, poses and widths that are not
// numbers. Nothing aborts, and nothing walks without end.

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "cbtr/cached_tris.h"
#include "cbtr/cube_tree.h"
#include "cbtr/model/lattice.h"
#include "cbtr/substraction.h"
#include "geom/stl3d.h"
#include "geom/topo_stl3d.h"
#include "soups.h"

namespace {

const std::string bad_input = std::string(QUVRA_TEST_DATA_DIR) + "/bad_input/";

stl3d_t* new_soup(const std::vector<geom::stl_tri_t>& tris) {
  return stl3d__new_by_copy_array(tris.front().a.data(), tris.size());
}

int count_tris(const cube_tree_t* tree, double width) {
  static int count;
  count = 0;
  cube_tree__get_tris(tree, width, [](const double*) { ++count; });
  return count;
}

}  // namespace

TEST(StockLimits, FarAndBrokenVerticesGiveNoStock) {
  for (const char* name : {"far_vertex.stl", "nan_vertex.stl", "inf_vertex.stl"}) {
    stl3d_t* soup = stl3d__new_by_file(bad_input + name);
    EXPECT_EQ(cube_tree__new(soup, 0.5, nullptr, nullptr), nullptr) << name;
    stl3d__delete(soup);
  }
}

TEST(StockLimits, FarToolsAndTinyWidthsLeaveTheStockUntouched) {
  stl3d_t* stock_soup = new_soup(quvra_test::box_soup(0, 0, 0, 4, 4, 4));
  cube_tree_t* tree = cube_tree__new(stock_soup, 0.5, nullptr, nullptr);
  ASSERT_NE(tree, nullptr);
  const int before = count_tris(tree, 0);
  stl3d_t* far_tool = stl3d__new_by_file(bad_input + "far_vertex.stl");
  substraction_t* cut = cube_tree__substract_by_stl3d(tree, far_tool, 0.5, false, false);
  EXPECT_FALSE(substraction__IsTouched(cut));
  substraction__dtor(cut);
  stl3d_t* tool = new_soup(quvra_test::box_soup(1, 1, 1, 3, 3, 5));
  cut = cube_tree__substract_by_stl3d(tree, tool, 1e-300, false, false);
  EXPECT_FALSE(substraction__IsTouched(cut));
  substraction__dtor(cut);
  EXPECT_EQ(count_tris(tree, 0), before);
  cube_tree__delete(tree);
  for (stl3d_t* s : {stock_soup, far_tool, tool}) stl3d__delete(s);
}

TEST(StockLimits, PosesBeyondTheLimitMakeNoToolVolume) {
  stl3d_t* soup = new_soup(quvra_test::box_soup(0, 0, 0, 1, 1, 1));
  topo_stl3d* mesh = topo_stl3d__new_by_stl3d(soup);
  double pose[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
  cached_tris_t* ok = new_stationary_cached_tris(mesh, pose, 1e-4);
  EXPECT_NE(ok, nullptr);
  delete_cached_tris(ok);
  pose[12] = 1e11;
  EXPECT_EQ(new_stationary_cached_tris(mesh, pose, 1e-4), nullptr);
  EXPECT_EQ(new_nonlinear_sweeping_cached_tris(mesh, pose, pose, 1e-4), nullptr);
  pose[12] = 0;
  pose[0] = 1e7;
  EXPECT_EQ(new_stationary_cached_tris(mesh, pose, 1e-4), nullptr);
  pose[0] = 1;
  EXPECT_EQ(new_stationary_cached_tris(mesh, pose, 1e-20), nullptr);
  topo_stl3d__delete(mesh);
  stl3d__delete(soup);
}

// Widths that are not numbers list nothing; an infinite or huge one lists
// the root's summary, as any width above the root's does.
TEST(StockLimits, ListingWidthsOutsideTheLatticeAreCoarsestOrRefused) {
  stl3d_t* soup = new_soup(quvra_test::sphere_soup(5, 12, 24));
  cube_tree_t* tree = cube_tree__new(soup, 0.5, nullptr, nullptr);
  ASSERT_NE(tree, nullptr);
  EXPECT_EQ(count_tris(tree, -1.0), 0);
  EXPECT_EQ(count_tris(tree, std::nan("")), 0);
  const int coarsest = count_tris(tree, 2e5);
  EXPECT_LT(coarsest, count_tris(tree, 0));
  EXPECT_EQ(count_tris(tree, 1.4e12), coarsest);
  EXPECT_EQ(count_tris(tree, HUGE_VAL), coarsest);
  EXPECT_EQ(cbtr::resolution_from_width(1.4e12), 0);
  EXPECT_EQ(cbtr::resolution_from_width(1e300), 0);
  cube_tree__delete(tree);
  stl3d__delete(soup);
}
