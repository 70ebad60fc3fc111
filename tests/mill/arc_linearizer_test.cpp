#include "interp/arc_linearizer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <stdexcept>

#include "interp/arc_centre.h"
#include "mill_test_support.h"

namespace mill {
namespace {

using test::distance;
using test::expect_point;

// Largest gap between the true arc and a chord, measured at each chord's
// middle, for an arc about centre in the xy plane.
double worst_sagitta(const vec3_t& start, const std::vector<vec3_t>& points, const vec3_t& centre, double radius) {
  double worst = 0;
  vec3_t from = start;
  for (const vec3_t& to : points) {
    const vec3_t mid{(from[0] + to[0]) / 2, (from[1] + to[1]) / 2, 0};
    worst = std::max(worst, radius - distance(mid, {centre[0], centre[1], 0}));
    from = to;
  }
  return worst;
}

TEST(ArcLinearizer, QuarterCircleStaysOnTheCircleWithinTolerance) {
  const arc_t arc{{10, 0, 0}, {0, 10, 0}, {0, 0, 0}, plane_t::xy, true, 0};
  const std::vector<vec3_t> points = linearize_arc(arc, 0.01);
  ASSERT_GT(points.size(), 5u);
  expect_point(points.back(), {0, 10, 0}, 0);
  for (const vec3_t& p : points) {
    EXPECT_NEAR(distance(p, {0, 0, 0}), 10, 1e-9);
    EXPECT_GE(p[0], -1e-9);
    EXPECT_GE(p[1], -1e-9);
  }
  EXPECT_LE(worst_sagitta(arc.start, points, arc.centre, 10), 0.01);
}

TEST(ArcLinearizer, FinerToleranceGivesMoreChords) {
  const arc_t arc{{10, 0, 0}, {0, 10, 0}, {0, 0, 0}, plane_t::xy, true, 0};
  const auto coarse = linearize_arc(arc, 0.1);
  const auto fine = linearize_arc(arc, 0.001);
  EXPECT_GT(fine.size(), 3 * coarse.size());
  EXPECT_LE(worst_sagitta(arc.start, fine, arc.centre, 10), 0.001);
  // However coarse the grid, a chord never spans more than a quarter turn.
  EXPECT_EQ(linearize_arc(arc, 100).size(), 1u);
  const arc_t circle{{10, 0, 0}, {10, 0, 0}, {0, 0, 0}, plane_t::xy, true, 0};
  EXPECT_EQ(linearize_arc(circle, 100).size(), 4u);
}

TEST(ArcLinearizer, ClockwiseTakesTheOtherWayRound) {
  const arc_t arc{{10, 0, 0}, {0, 10, 0}, {0, 0, 0}, plane_t::xy, false, 0};
  const std::vector<vec3_t> points = linearize_arc(arc, 0.01);
  // Three quarters of a turn through (0, -10) and (-10, 0).
  bool passed_below = false;
  bool passed_left = false;
  for (const vec3_t& p : points) {
    passed_below |= distance(p, {0, -10, 0}) < 0.5;
    passed_left |= distance(p, {-10, 0, 0}) < 0.5;
  }
  EXPECT_TRUE(passed_below);
  EXPECT_TRUE(passed_left);
}

TEST(ArcLinearizer, HelixClimbsInStepWithTheAngle) {
  // Two full turns down 8 mm about (0, 0).
  const arc_t arc{{5, 0, 0}, {5, 0, -8}, {0, 0, 0}, plane_t::xy, true, 1};
  const std::vector<vec3_t> points = linearize_arc(arc, 0.01);
  double turned = 0;
  vec3_t from = arc.start;
  for (const vec3_t& p : points) {
    double step = std::atan2(p[1], p[0]) - std::atan2(from[1], from[0]);
    if (step < 0) step += 2 * std::numbers::pi;
    turned += step;
    EXPECT_NEAR(p[2], -8 * turned / (4 * std::numbers::pi), 1e-9);
    from = p;
  }
  EXPECT_NEAR(turned, 4 * std::numbers::pi, 1e-9);
}

TEST(ArcLinearizer, OtherPlanesTurnFromTheirFirstAxisToTheirSecond) {
  // zx: counter-clockwise carries +Z towards +X; the normal Y climbs.
  const arc_t zx{{0, 0, 10}, {10, 4, 0}, {0, 0, 0}, plane_t::zx, true, 0};
  for (const vec3_t& p : linearize_arc(zx, 0.01)) {
    EXPECT_NEAR(std::hypot(p[0], p[2]), 10, 1e-9);
    EXPECT_GE(p[0], -1e-9);
    EXPECT_GE(p[2], -1e-9);
  }
  // yz: counter-clockwise carries +Y towards +Z.
  const arc_t yz{{0, 10, 0}, {0, 0, 10}, {0, 0, 0}, plane_t::yz, true, 0};
  const std::vector<vec3_t> points = linearize_arc(yz, 0.01);
  const vec3_t& mid = points[points.size() / 2];
  EXPECT_GT(mid[1], 1);
  EXPECT_GT(mid[2], 1);
}

TEST(ArcCentre, RadiusPicksTheCentreBySenseAndSign) {
  arc_t arc{{0, 0, 0}, {10, 10, 0}, {}, plane_t::xy, true, 0};
  place_centre_by_radius(arc, 10);
  expect_point(arc.centre, {0, 10, 0});
  arc.ccw = false;
  place_centre_by_radius(arc, 10);
  expect_point(arc.centre, {10, 0, 0});
  arc.ccw = true;
  place_centre_by_radius(arc, -10);  // the long way round
  expect_point(arc.centre, {10, 0, 0});
}

TEST(ArcCentre, RejectsArcsThatCannotExist) {
  arc_t arc{{0, 0, 0}, {10, 0, 0}, {}, plane_t::xy, true, 0};
  EXPECT_THROW(place_centre_by_radius(arc, 4), std::invalid_argument);
  arc.end = arc.start;
  EXPECT_THROW(place_centre_by_radius(arc, 4), std::invalid_argument);

  arc = {{0, 0, 0}, {20, 0, 0}, {5, 0, 0}, plane_t::xy, true, 0};
  EXPECT_THROW(check_end_on_circle(arc), std::invalid_argument);
  arc.end = {10.005, 0, 0};  // rounding in the program's numbers passes
  EXPECT_NO_THROW(check_end_on_circle(arc));
}

}  // namespace
}  // namespace mill
