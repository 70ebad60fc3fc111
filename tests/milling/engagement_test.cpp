// Engagement of a flat end mill feeding along +x through a real stock: the
// stock is cut along the path first, then the step at the tool's current
// place gives the contours. The angles where the flank meets the material
// are known in closed form: a radial depth ae of a tool of diameter D is
// engaged over acos(1 - 2 ae / D), from the side the material is on.

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

#include "mill_scene.h"
#include "milling/engagement_t.h"
#include "milling/milling_contours.h"
#include "milling/milling_engagement.h"

namespace {

using quvra_test::end_mill_t;
using quvra_test::mill_scene_t;

constexpr double pi = std::numbers::pi;
constexpr double cell = 0.25;
const end_mill_t tool{5.0, 10.0};
// Heights on the flank, clear of the cell faces, within the 6 mm depth of cut.
const std::vector<double> levels = {1.1, 2.1, 3.1, 4.1, 5.1};
const std::vector<double> level_steps(levels.size(), 1.0);

struct move_t {
  std::array<double, 3> from;
  std::array<double, 3> to;
};

// The engagement of the tool's move in a block whose material ends at
// y = block_y1; clip_to_motion as given.
mech::engagement_t engagement_of(const move_t& move, double block_y1, bool clip, double ring_step = 0.5) {
  mill_scene_t scene({-20, -15, 0, 20, block_y1, 10}, cell);
  scene.cut_path_to(tool, move.from);
  substraction_t* step = scene.cut_tool_at(tool, move.to);
  const auto to_tool = quvra_test::stock_to_tool(move.to);
  milling_contours_t* contours = milling_contours__new_by_substraction(step, to_tool.data(), nullptr);
  const auto prev = quvra_test::tool_pose(move.from);
  const auto cur = quvra_test::tool_pose(move.to);
  milling_engagement_t* e =
      milling_engagement__new_by_contours(contours, 7, levels.data(), level_steps.data(), int(levels.size()),
                                          prev.data(), cur.data(), tool.radius, ring_step, clip ? 1 : 0);
  EXPECT_NE(e, nullptr);
  mech::engagement_t copy = *e;
  milling_engagement__delete(e);
  milling_contours__delete(contours);
  substraction__dtor(step);
  return copy;
}

// The engaged range through angle a at one side slice, if any.
const mech::angle_range_t* range_through(const mech::engagement_slice_t& slice, double a) {
  for (const auto& r : slice.ranges)
    if (r.start <= a && a <= r.end) return &r;
  return nullptr;
}

// Every side slice is engaged from entry to exit (ends within tol) through
// the angle a, and nowhere else.
void expect_engaged(const mech::engagement_t& e, double entry, double exit, double a, double tol) {
  ASSERT_EQ(e.side.size(), levels.size());
  for (const auto& slice : e.side) {
    const mech::angle_range_t* r = range_through(slice, a);
    ASSERT_NE(r, nullptr) << "z " << slice.pos;
    EXPECT_NEAR(r->start, entry, tol) << "z " << slice.pos;
    EXPECT_NEAR(r->end, exit, tol) << "z " << slice.pos;
    EXPECT_EQ(slice.ranges.size(), 1u) << "z " << slice.pos;
    EXPECT_EQ(slice.step, 1.0);
  }
}

// A chord of the contour may stray from the tool's circle by a cell's
// diagonal; at the radius that is this many radians.
const double cell_angle = std::sqrt(3.0) * cell / tool.radius;

TEST(Engagement, FullSlotEngagesTheFrontHalfOfTheFlank) {
  const move_t move{{-2.0, 0, 4.0}, {-1.6, 0, 4.0}};
  const mech::engagement_t e = engagement_of(move, 15, true);
  EXPECT_EQ(e.tag, 7);
  expect_engaged(e, -pi / 2, pi / 2, 0.0, cell_angle);
  // A horizontal move does not push the bottom into the material.
  EXPECT_TRUE(e.bottom.empty());
}

TEST(Engagement, UnclippedSlotTakesTheCrescentLeftByThePreviousPlace) {
  const move_t move{{-2.0, 0, 4.0}, {-1.0, 0, 4.0}};
  const mech::engagement_t e = engagement_of(move, 15, false);
  // The new circle leaves the old one where cos(theta) = -f / (2 R).
  const double edge = pi / 2 + std::asin(1.0 / (2 * tool.radius));
  expect_engaged(e, -edge, edge, 0.0, cell_angle);
  EXPECT_FALSE(e.bottom.empty());  // without the motion, all contact at the tip is bottom
}

TEST(Engagement, PartialImmersionMatchesTheAnalyticEntryAngle) {
  for (double ae : {2.5, 1.5}) {
    // Material up to y = ae - R seen from the tool: climb milling on the -y
    // side, engaged from -pi/2 up to the exit at asin(ae / R - 1).
    const double y1 = ae - tool.radius;
    const move_t move{{-2.0, 0, 4.0}, {-1.6, 0, 4.0}};
    const mech::engagement_t e = engagement_of(move, y1, true);
    const double exit = -pi / 2 + std::acos(1 - 2 * ae / (2 * tool.radius));
    expect_engaged(e, -pi / 2, exit, -pi / 2 + 0.5 * std::acos(1 - ae / tool.radius), cell_angle);
  }
}

TEST(Engagement, RampPushesTheWholeBottomIntoTheMaterial) {
  // Rings narrower than half a cell: each contact triangle is cut with its
  // rings exactly, not by the estimate kept for small triangles.
  const move_t move{{-2.0, 0, 4.3}, {-1.6, 0, 4.0}};
  const mech::engagement_t e = engagement_of(move, 15, true, 0.1);
  expect_engaged(e, -pi / 2, pi / 2, 0.0, cell_angle);
  ASSERT_FALSE(e.bottom.empty());
  // Rings clear of the rim and of the cells at the axis are whole circles.
  for (const auto& ring : e.bottom) {
    EXPECT_EQ(ring.step, 0.1);
    if (ring.pos < 1.0 || ring.pos > tool.radius - 1.0) continue;
    ASSERT_EQ(ring.ranges.size(), 1u) << "r " << ring.pos;
    EXPECT_NEAR(ring.ranges[0].start, -pi, 1e-9);
    EXPECT_NEAR(ring.ranges[0].end, pi, 1e-9);
  }
}

}  // namespace
