// The switches read from the environment, the ordering of judge values and
// the width probe's report.

#include "cbtr/build/judge_value.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

namespace {

using namespace cbtr;

TEST(TipFlags, PresenceTurnsPackAndProbeOnButSharpNeedsAValueOtherThanZero) {
  EXPECT_FALSE(tip_flags_from(nullptr, nullptr, nullptr).pack);
  EXPECT_TRUE(tip_flags_from("", nullptr, nullptr).pack);
  EXPECT_TRUE(tip_flags_from(nullptr, "", nullptr).width_probe);
  EXPECT_FALSE(tip_flags_from(nullptr, nullptr, "").sharp_encode);
  EXPECT_FALSE(tip_flags_from(nullptr, nullptr, "0").sharp_encode);
  EXPECT_TRUE(tip_flags_from(nullptr, nullptr, "00").sharp_encode);
  EXPECT_TRUE(tip_flags_from(nullptr, nullptr, "1").sharp_encode);
}

// A triangle whose normal is (a, b, 1): corners (0,0,0), (1,0,-a), (0,1,-b).
tri_extension_t tilted(const fr& a, const fr& b) {
  const fr zero(0), one(1);
  return tri_extension_t(exact_tri_t{{zero, zero, zero}, {one, zero, -a}, {zero, one, -b}, {}, {}});
}

TEST(JudgeValue, OrdersCrossingsOfTheMovedLineFirstByTheNearerStep) {
  // Along z, moved by (e, e^2) on x and y: t = t0 - a e - b e^2.
  const judge_t steep = judge_value(tilted(fr(3), fr(0)), 2);
  EXPECT_EQ(steep.first, fr(-3));
  EXPECT_EQ(steep.second, fr(0));
  const judge_t flat = judge_value(tilted(fr(0), fr(5)), 2);
  EXPECT_GT(compare_judges(flat, steep), 0);
  EXPECT_LT(compare_judges(judge_value(tilted(fr(0), fr(7)), 2), flat), 0);
  EXPECT_EQ(compare_judges(flat, judge_value(tilted(fr(0), fr(5)), 2)), 0);
}

TEST(JudgeValue, BitWidthIsTheWiderOfNumeratorAndDenominator) {
  EXPECT_EQ(fraction_bit_width(fr(0)), 0u);
  EXPECT_EQ(fraction_bit_width(fr(255, 2)), 8u);
  EXPECT_EQ(fraction_bit_width(fr(1, 1024)), 11u);
}

class WidthProbe : public ::testing::Test {
 protected:
  void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(WidthProbe, SaysNothingWithoutSamples) { EXPECT_EQ(width_probe_report(), ""); }

// The switch is read when the library loads, so the probe runs in a fresh
// process that inherits it.
TEST_F(WidthProbe, WideJudgeValuesCountInTheirBucketUnderTheFixedLabels) {
  setenv("QV_CBTR_WIDTH_PROBE", "", 1);
  EXPECT_EXIT(
      {
        const fr huge = geom::make_fraction(geom::big_int_t(1) << 3999, 1);
        judge_value(tilted(huge, fr(1)), 2);
        std::fputs(width_probe_report().c_str(), stderr);
        std::_Exit(0);
      },
      ::testing::ExitedWithCode(0),
      "== cbtr tips judge-value width probe ==\n  samples          2\n  max operand      4000 bits\n"
      "  max before pack  4000 bits\n  max after pack   4000 bits\n"
      "  before pack <64 bits: 1 \\(50%\\)\n  before pack <16384 bits: 1 \\(50%\\)\n");
  unsetenv("QV_CBTR_WIDTH_PROBE");
}

}  // namespace
