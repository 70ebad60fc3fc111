// Contact contours in the tool frame, from a box-shaped tool sunk into the
// top of a block: its bottom face and the lower part of its sides touch.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

#include "cbtr/substraction.h"
#include "geom/stl3d.h"
#include "mill_scene.h"
#include "milling/milling_contours.h"
#include "milling/milling_contours_t.h"
#include "soups.h"

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();

struct box_cut_t {
  cube_tree_t* tree;
  substraction_t* step;
  // A 4 x 2 tool footprint, 1.4 deep into the top of a 10 x 10 x 5 block.
  explicit box_cut_t(bool reach) {
    const auto block = quvra_test::box_soup(0, 0, 0, 10, 10, 5);
    stl3d_t* b = stl3d__new_by_copy_array(reinterpret_cast<const double*>(block.data()), block.size());
    tree = cube_tree__new(b, 0.25, nullptr, nullptr);
    const double z0 = reach ? 3.6 : 6.0;
    const auto tool = quvra_test::box_soup(3.1, 4.1, z0, 7.1, 6.1, z0 + 4);
    stl3d_t* t = stl3d__new_by_copy_array(reinterpret_cast<const double*>(tool.data()), tool.size());
    step = cube_tree__substract_by_stl3d(tree, t, 0.25, true, false);
    stl3d__delete(b);
    stl3d__delete(t);
  }
  ~box_cut_t() {
    substraction__dtor(step);
    cube_tree__delete(tree);
  }
  // The contours seen from a tool whose tip is at tip.
  milling_contours_t* contours(const std::array<double, 3>& tip, double* box) const {
    return milling_contours__new_by_substraction(step, quvra_test::stock_to_tool(tip).data(), box);
  }
};

TEST(MillingContours, PointsMoveToTheToolFrameAndBoxTheContact) {
  box_cut_t cut(true);
  double box[6];
  milling_contours_t* c = cut.contours({5.1, 5.1, 3.6}, box);
  ASSERT_NE(c, nullptr);
  EXPECT_NEAR(box[0], -2.0, 1e-9);
  EXPECT_NEAR(box[1], -1.0, 1e-9);
  EXPECT_NEAR(box[2], 0.0, 1e-9);
  EXPECT_NEAR(box[3], 2.0, 1e-9);
  EXPECT_NEAR(box[4], 1.0, 1e-9);
  EXPECT_NEAR(box[5], 1.4, 1e-9);
  // Across the feed the contact is the tool's 2 mm, at the flank and whole.
  EXPECT_NEAR(milling_contours__get_plural_cutting_width(c, 1.0), 2.0, 1e-9);
  EXPECT_NEAR(milling_contours__get_plural_cutting_width(c, 10.0), 2.0, 1e-9);
  // Looking up at the tip sees the 4 x 2 footprint; z pointing up counts nothing.
  const double up[3] = {0, 0, 1}, down[3] = {0, 0, -1}, across[3] = {0, -1, 0};
  // The cells at the footprint's corners cut their corner off: within a cell
  // squared in all.
  EXPECT_NEAR(milling_contours__get_projected_area(c, down), 8.0, 0.25 * 0.25);
  EXPECT_EQ(milling_contours__get_projected_area(c, up), 0.0);
  // Along y both 4 x 1.4 sides count, each loop by its own size.
  EXPECT_NEAR(milling_contours__get_projected_area(c, across), 11.2, 0.25 * 0.25);
  milling_contours__delete(c);
}

TEST(MillingContours, NoContactGivesNoLoopsAndAnEmptyBox) {
  box_cut_t cut(false);
  double box[6];
  milling_contours_t* c = cut.contours({0, 0, 0}, box);
  ASSERT_NE(c, nullptr);
  EXPECT_TRUE(c->loops.empty());
  EXPECT_EQ(box[0], inf);
  EXPECT_EQ(box[5], -inf);
  EXPECT_EQ(milling_contours__get_plural_cutting_width(c, 0), 0.0);
  milling_contours__delete(c);
  EXPECT_EQ(milling_contours__new_by_substraction(nullptr, quvra_test::tool_pose({0, 0, 0}).data(), box), nullptr);
  EXPECT_EQ(milling_contours__new_by_substraction(cut.step, nullptr, box), nullptr);
  milling_contours__delete(nullptr);
}

TEST(MillingContours, ShortLoopsAddNoArea) {
  mech::milling_contours_t c;
  c.loops = {{{0, 0, 0}, {1, 0, 0}}, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}};
  EXPECT_NEAR(c.projected_area({0, 0, -1}), 0.5, 1e-12);
}

}  // namespace
