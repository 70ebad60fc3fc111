#include "host/tool_pose.h"

#include <gtest/gtest.h>

#include <cmath>

namespace mill {
namespace {

vec3_t apply(const pose_t& m, const vec3_t& p) {
  return {m[0] * p[0] + m[4] * p[1] + m[8] * p[2] + m[12], m[1] * p[0] + m[5] * p[1] + m[9] * p[2] + m[13],
          m[2] * p[0] + m[6] * p[1] + m[10] * p[2] + m[14]};
}

void expect_rigid(const pose_t& m) {
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) {
      double dot = 0;
      for (int k = 0; k < 3; ++k) dot += m[4 * i + k] * m[4 * j + k];
      EXPECT_NEAR(dot, i == j ? 1 : 0, 1e-12) << "columns " << i << ", " << j;
    }
  EXPECT_EQ(m[3], 0);
  EXPECT_EQ(m[7], 0);
  EXPECT_EQ(m[11], 0);
  EXPECT_EQ(m[15], 1);
}

TEST(ToolPose, AnUprightToolIsAPureTranslationBitForBit) {
  const pose_t m = tool_pose({1.5, -2, 3}, {0, 0, 1});
  const pose_t expected{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1.5, -2, 3, 1};
  for (int i = 0; i < 16; ++i) {
    EXPECT_EQ(m[i], expected[i]) << "element " << i;
    if (i < 12) {
      EXPECT_FALSE(std::signbit(m[i])) << "no negative zero in the rotation, element " << i;
    }
  }
}

TEST(ToolPose, TheToolAxisAndTipGoWhereAsked) {
  const double s = std::sqrt(0.5);
  for (const vec3_t& axis : {vec3_t{s, 0, s}, vec3_t{0, -s, s}, vec3_t{1, 0, 0}, vec3_t{0.48, 0.6, 0.64},
                             vec3_t{0.6, 0, -0.8}, vec3_t{0, 0, -1}}) {
    const pose_t m = tool_pose({10, 20, 30}, axis);
    expect_rigid(m);
    const vec3_t tip = apply(m, {0, 0, 0});
    const vec3_t up = apply(m, {0, 0, 1});
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(tip[i], (vec3_t{10, 20, 30}[i]));
      EXPECT_NEAR(up[i] - tip[i], axis[i], 1e-12) << "axis " << axis[0] << ',' << axis[1] << ',' << axis[2];
    }
  }
}

}  // namespace
}  // namespace mill
