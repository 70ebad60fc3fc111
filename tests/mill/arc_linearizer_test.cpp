#include "interp/arc_linearizer.h"

#include <gtest/gtest.h>

#include <cmath>
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

// The interpreter's tests follow the sense, planes, helices and tolerance of
// arcs through whole programs; here, the cap on a chord's turn.
TEST(ArcLinearizer, AChordNeverSpansMoreThanAQuarterTurn) {
  const arc_t arc{{10, 0, 0}, {0, 10, 0}, {0, 0, 0}, plane_t::xy, true, 0};
  EXPECT_EQ(linearize_arc(arc, 100).size(), 1u);
  const arc_t circle{{10, 0, 0}, {10, 0, 0}, {0, 0, 0}, plane_t::xy, true, 0};
  EXPECT_EQ(linearize_arc(circle, 100).size(), 4u);
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
