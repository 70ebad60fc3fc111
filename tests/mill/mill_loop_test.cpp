#include "host/mill_loop.h"

#include <gtest/gtest.h>

#include <sstream>

namespace mill {
namespace {

move_t move(std::uint32_t line, move_kind kind, vec3_t start, vec3_t end) {
  move_t m;
  m.line = line;
  m.kind = kind;
  m.start = start;
  m.end = end;
  return m;
}

const std::vector<move_t> path{
    move(1, move_kind::rapid, {0, 0, 0}, {0, 0, 50}), move(2, move_kind::feed, {0, 0, 50}, {3, 4, 50}),
    move(3, move_kind::arc_segment, {3, 4, 50}, {3, 4, 38}), move(4, move_kind::feed, {3, 4, 38}, {3, 10, 38})};

struct seen_t {
  vec3_t from, to;
};

TEST(MillLoop, CutsEachMoveFromItsStartPoseToItsEndPose) {
  std::vector<seen_t> seen;
  const move_cutter_t cut = [&](const move_t& m, const pose_t& a, const pose_t& b) {
    seen.push_back({{a[12], a[13], a[14]}, {b[12], b[13], b[14]}});
    return cut_outcome_t{m.line % 2 == 0, m.line * 1.5};
  };
  std::ostringstream log;
  progress_view_t progress(log, false, path.size());
  const loop_result_t r = run_moves(
      path, cut, [] { return false; }, progress);
  ASSERT_EQ(r.records.size(), 4u);
  EXPECT_FALSE(r.interrupted);
  // The first move starts where the machine stood, which nobody knows: the
  // tool only stands at its end.
  EXPECT_EQ(seen[0].from, (vec3_t{0, 0, 50}));
  EXPECT_EQ(r.records[0].length, 0);
  EXPECT_EQ(seen[1].from, (vec3_t{0, 0, 50}));
  EXPECT_EQ(seen[3].to, (vec3_t{3, 10, 38}));
  EXPECT_EQ(r.records[1].length, 5);
  EXPECT_EQ(r.records[2].kind, move_kind::arc_segment);
  EXPECT_EQ(r.records[2].line, 3u);
  EXPECT_TRUE(r.records[3].outcome.touched);
  EXPECT_EQ(r.records[3].outcome.contact_area, 6);
  EXPECT_EQ(log.str().substr(log.str().rfind("cut")), "cut 4 of 4 moves (100%)\n");
}

TEST(MillLoop, AStopEndsTheRunAfterTheMoveBeingCut) {
  int cuts = 0;
  const move_cutter_t cut = [&](const move_t&, const pose_t&, const pose_t&) {
    ++cuts;
    return cut_outcome_t{};
  };
  std::ostringstream log;
  progress_view_t progress(log, false, path.size());
  const loop_result_t r = run_moves(
      path, cut, [&] { return cuts == 2; }, progress);
  EXPECT_EQ(cuts, 2);
  EXPECT_EQ(r.records.size(), 2u);
  EXPECT_TRUE(r.interrupted);
}

TEST(MillLoop, AStopAfterTheLastMoveIsNoInterruption) {
  const move_cutter_t cut = [](const move_t&, const pose_t&, const pose_t&) { return cut_outcome_t{}; };
  std::ostringstream log;
  progress_view_t progress(log, false, 1);
  EXPECT_FALSE(run_moves(
                   {path[0]}, cut, [] { return true; }, progress)
                   .interrupted);
}

}  // namespace
}  // namespace mill
