#include "cbtr/cache/draw_depth.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>

#include "cbtr/cbtr_cache.h"
#include "hand_trees.h"

namespace {

using namespace cbtr;

const view_test_t all_inside = [](const double*, double) { return 2; };
const view_test_t all_outside = [](const double*, double) { return 0; };
const view_test_t all_crossing = [](const double*, double) { return 1; };

TEST(ViewDepth, DeepestDepthWhoseCellsAndThoseAboveStayUnderTheLimit) {
  const auto tree = quvra_test::full_tree();  // 1, 8 and 64 cells
  EXPECT_EQ(view_depth(*tree, all_inside, 0), 0);
  EXPECT_EQ(view_depth(*tree, all_inside, 1), 0);
  EXPECT_EQ(view_depth(*tree, all_inside, 8), 0);
  EXPECT_EQ(view_depth(*tree, all_inside, 9), 1);
  EXPECT_EQ(view_depth(*tree, all_crossing, 64), 1);
  EXPECT_EQ(view_depth(*tree, all_crossing, 65), 2);
  // Nothing in view: no depth is crowded, so the finest is allowed.
  EXPECT_EQ(view_depth(*tree, all_outside, 1), 2);
  EXPECT_EQ(view_depth(cube_tree_t(7), all_inside, 3), 7);
}

TEST(ViewDepth, CellsAreTestedAsSpheresAroundTheirCentres) {
  const auto tree = quvra_test::full_tree();
  std::vector<std::array<double, 4>> spheres;
  const view_test_t record = [&spheres](const double* c, double r) {
    spheres.push_back({c[0], c[1], c[2], r});
    return 1;
  };
  view_depth(*tree, record, 1000);
  ASSERT_EQ(spheres.size(), 1u + 8u + 64u);
  EXPECT_EQ(spheres[0], (std::array<double, 4>{0, 0, 0, 1.7320508075688772 * 131072}));
  // Child 0 of the root, then its child 0: low on every axis.
  EXPECT_EQ(spheres[1], (std::array<double, 4>{-32768, -32768, -32768, 1.7320508075688772 * 65536}));
  EXPECT_EQ(spheres[2], (std::array<double, 4>{-49152, -49152, -49152, 1.7320508075688772 * 32768}));
}

// A view that finds every cell in the same relation, counting its tests.
view_test_t counting(int& tests, int relation) {
  return [&tests, relation](const double*, double) {
    ++tests;
    return relation;
  };
}

TEST(ViewDepth, CrowdedDepthsAreNotWalkedToTheEnd) {
  const auto tree = quvra_test::full_tree();
  int tests = 0;
  EXPECT_EQ(view_depth(*tree, counting(tests, 1), 2), 0);
  EXPECT_LT(tests, 1 + 8 + 64);
}

TEST(ViewDepth, CellsInsideACellWhollyInViewAreNotTestedAgain) {
  const auto tree = quvra_test::full_tree();
  int tests = 0;
  EXPECT_EQ(view_depth(*tree, counting(tests, 2), 1000), 2);
  EXPECT_EQ(tests, 1);
}

// The node limit is process-wide: put back the host's rendering cap.
class DrawDepth : public ::testing::Test {
 protected:
  void SetUp() override {
    _saved = cbtr__get_rendering_cap();
    cbtr__set_rendering_cap(std::uint64_t{9} * 14580 << 5);  // node limit 9
  }
  void TearDown() override { cbtr__set_rendering_cap(_saved); }

 private:
  std::uint64_t _saved = 0;
};

TEST_F(DrawDepth, CoarserAtOnceFinerOnlyAfterTenFrames) {
  const auto tree = quvra_test::full_tree();
  for (int frame = 0; frame < 10; ++frame) EXPECT_EQ(choose_draw_depth(*tree, all_outside), 2);
  EXPECT_EQ(choose_draw_depth(*tree, all_inside), 1);  // at once
  for (int frame = 0; frame < 9; ++frame) EXPECT_EQ(choose_draw_depth(*tree, all_outside), 1) << frame;
  EXPECT_EQ(choose_draw_depth(*tree, all_outside), 2);
}

TEST_F(DrawDepth, EachThreadAndEachTreeKeepsItsOwnFrames) {
  const auto tree = quvra_test::full_tree();
  const auto other = quvra_test::full_tree();
  EXPECT_EQ(choose_draw_depth(*tree, all_inside), 1);
  EXPECT_EQ(choose_draw_depth(*other, all_outside), 2);
  int elsewhere = -1;
  std::thread([&] { elsewhere = choose_draw_depth(*tree, all_outside); }).join();
  EXPECT_EQ(elsewhere, 2);
  EXPECT_EQ(choose_draw_depth(*tree, all_outside), 1);
}

TEST_F(DrawDepth, WithoutANodeLimitEveryTreeIsDrawnAtTheRoot) {
  cbtr__set_rendering_cap(0);
  const auto tree = quvra_test::full_tree();
  EXPECT_EQ(choose_draw_depth(*tree, all_outside), 0);
  EXPECT_EQ(choose_draw_depth(*tree, all_inside), 0);
}

}  // namespace
