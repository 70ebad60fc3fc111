// How the engagement gathers angles: ranges across +-pi, touching ranges,
// and hand-made contours whose contact is known exactly.

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

#include "milling/engagement_build.h"
#include "milling/engagement_bytes.h"
#include "milling/engagement_t.h"

namespace {

constexpr double pi = std::numbers::pi;

TEST(EngagementRanges, ARangeAcrossPiBecomesTwoAndTouchingRangesJoin) {
  std::vector<mech::angle_range_t> r;
  mech::insert_range(r, 3.0, -3.0);
  ASSERT_EQ(r.size(), 2u);
  EXPECT_EQ(r[0].start, -pi);
  EXPECT_EQ(r[0].end, -3.0);
  EXPECT_EQ(r[1].start, 3.0);
  EXPECT_EQ(r[1].end, pi);
  mech::insert_range(r, 0.5, 1.0);
  mech::insert_range(r, -1.0, 0.5);
  mech::insert_range(r, 0.9, 3.0);
  ASSERT_EQ(r.size(), 2u);
  EXPECT_EQ(r[1].start, -1.0);
  EXPECT_EQ(r[1].end, pi);
  EXPECT_TRUE(mech::in_ranges(r, -3.0));
  EXPECT_FALSE(mech::in_ranges(r, -2.0));
}

// A quarter of the flank of a tool of radius 2 between heights 0 and 1 as
// sixteenth-turn facets, each a loop facing out of the tool, as a step's
// cell polygons are.
mech::milling_contours_t quarter_flank() {
  mech::milling_contours_t c;
  const auto at = [](int i, double z) {
    const double a = -pi / 4 + i * pi / 16;
    return geom::vec3d{2 * std::cos(a), 2 * std::sin(a), z};
  };
  for (int i = 0; i < 8; ++i) c.loops.push_back({at(i, 0), at(i + 1, 0), at(i + 1, 1), at(i, 1)});
  return c;
}

mech::engagement_request_t request(const std::vector<double>& levels, const std::vector<double>& steps) {
  mech::engagement_request_t req;
  req.levels = levels;
  req.level_steps = steps;
  req.pose_prev = geom::mat4d::identity();
  req.pose_cur = geom::mat4d::identity();
  req.ring_step = 0.5;
  return req;
}

TEST(EngagementRanges, FlankQuarterGivesItsAnglesAtEveryLevel) {
  const std::vector<double> levels = {0.25, 0.75, 2.0}, steps = {0.5, 0.5, 0.5};
  const mech::engagement_t e = mech::build_engagement(quarter_flank(), request(levels, steps));
  ASSERT_EQ(e.side.size(), 2u);  // 2.0 is above the contact
  for (const auto& slice : e.side) {
    ASSERT_EQ(slice.ranges.size(), 1u);
    EXPECT_NEAR(slice.ranges[0].start, -pi / 4, 1e-12);
    EXPECT_NEAR(slice.ranges[0].end, pi / 4, 1e-12);
    EXPECT_EQ(slice.step, 0.5);
  }
  // bottom_radius 0: the points at z 0 stay side contact.
  EXPECT_TRUE(e.bottom.empty());
}

TEST(EngagementRanges, ClippedToMotionOnlyTheFrontCounts) {
  const std::vector<double> levels = {0.5}, steps = {1.0};
  mech::engagement_request_t req = request(levels, steps);
  req.clip_to_motion = true;
  req.pose_cur.m[12] = -0.1;  // moving away from the quarter: nothing is in front
  EXPECT_TRUE(mech::build_engagement(quarter_flank(), req).side.empty());
  req.pose_cur.m[12] = 0;
  req.pose_cur.m[13] = 0.1;  // moving along y: only the part of the quarter with y > 0
  const mech::engagement_t e = mech::build_engagement(quarter_flank(), req);
  ASSERT_EQ(e.side.size(), 1u);
  ASSERT_EQ(e.side[0].ranges.size(), 1u);
  EXPECT_NEAR(e.side[0].ranges[0].start, 0.0, 1e-12);
  EXPECT_NEAR(e.side[0].ranges[0].end, pi / 4, 1e-12);
}

TEST(EngagementRanges, NoContoursGiveTheTwentyByteForm) {
  const mech::engagement_t e = mech::build_engagement({}, request({}, {}));
  EXPECT_EQ(mech::engagement_bytes_size(e), 20u);
}

}  // namespace
