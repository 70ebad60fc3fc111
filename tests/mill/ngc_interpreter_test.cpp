#include "interp/ngc_interpreter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

#include "interp/tool_desc_parse.h"
#include "mill_test_support.h"

namespace mill {
namespace {

using test::distance;
using test::expect_point;

// Every arc segment of p ends at radius from centre, measured in the plane
// of axes a and b.
void expect_on_circle(const program_t& p, const vec3_t& centre, double radius, int a, int b) {
  for (const move_t& m : p.moves) {
    if (m.kind != move_kind::arc_segment) continue;
    EXPECT_NEAR(std::hypot(m.end[a] - centre[a], m.end[b] - centre[b]), radius, 1e-6);
  }
}

TEST(NgcInterpreter, StraightMovesFollowModalMotionAndFeed) {
  const program_t p = test::ngc("G0 X10 Y20 Z5\nG1 X15 F100\nY25 Z0\nG0 Z10\n");
  ASSERT_EQ(p.moves.size(), 4u);
  EXPECT_EQ(p.files, std::vector<std::string>{"prog.ngc"});
  EXPECT_EQ(p.moves[0].kind, move_kind::rapid);
  expect_point(p.moves[0].start, {0, 0, 0});
  expect_point(p.moves[0].end, {10, 20, 5});
  EXPECT_EQ(p.moves[1].kind, move_kind::feed);
  EXPECT_EQ(p.moves[1].feed, 100);
  expect_point(p.moves[1].end, {15, 20, 5});
  expect_point(p.moves[2].end, {15, 25, 0});
  EXPECT_EQ(p.moves[2].line, 3u);
  EXPECT_EQ(p.moves[3].kind, move_kind::rapid);
  EXPECT_EQ(p.moves[3].feed, 0);
  expect_point(p.moves[3].axis_end, {0, 0, 1});
}

TEST(NgcInterpreter, StartPositionAndZeroLengthMoves) {
  interp_options_t options;
  options.start = {1, 2, 3};
  const program_t p = test::ngc("G0 X1 Y2 Z3\nG0 Z4\n", options);
  ASSERT_EQ(p.moves.size(), 1u);  // the first move goes nowhere and is dropped
  expect_point(p.moves[0].start, {1, 2, 3});
}

TEST(NgcInterpreter, IncrementalDistanceMode) {
  const program_t p = test::ngc("G0 X5\nG91 X1 Y1\nX1 Z-2\nG90 X0\n");
  ASSERT_EQ(p.moves.size(), 4u);
  expect_point(p.moves[1].end, {6, 1, 0});
  expect_point(p.moves[2].end, {7, 1, -2});
  expect_point(p.moves[3].end, {0, 1, -2});
}

TEST(NgcInterpreter, InchBlocksConvertToMillimetres) {
  const program_t p = test::ngc("G20 G1 X1 F10\nG21 X1\nG20 G91 Y0.5\nG21 G90 G1 X3 F300\n");
  ASSERT_EQ(p.moves.size(), 4u);
  expect_point(p.moves[0].end, {25.4, 0, 0});
  EXPECT_NEAR(p.moves[0].feed, 254, 1e-9);  // F is read in the block's units
  expect_point(p.moves[1].end, {1, 0, 0});
  expect_point(p.moves[2].end, {1, 12.7, 0});
  EXPECT_NEAR(p.moves[2].feed, 254, 1e-9);  // an unchanged feed keeps its speed
  EXPECT_NEAR(p.moves[3].feed, 300, 1e-9);

  // Centres and radii are lengths too.
  for (const char* arc : {"G20 G0 X1\nG3 X0 Y1 I-1 F10", "G20 G0 X1\nG3 X0 Y1 R1 F10"}) {
    const program_t q = test::ngc(arc);
    expect_point(q.moves.back().end, {0, 25.4, 0}, 1e-12);
    expect_on_circle(q, {0, 0, 0}, 25.4, 0, 1);
  }
}

TEST(NgcInterpreter, ArcsInEachPlaneByCentreAndByRadius) {
  struct case_t {
    const char* program;
    vec3_t end;
    vec3_t centre;
    int a;
    int b;
  };
  const case_t cases[] = {
      {"G0 X10\nG3 X0 Y10 I-10 J0 F100", {0, 10, 0}, {0, 0, 0}, 0, 1},
      {"G0 X10\nG3 X0 Y10 R10 F100", {0, 10, 0}, {0, 0, 0}, 0, 1},
      {"G18 G0 Z10\nG3 X10 Z0 K-10 F100", {10, 0, 0}, {0, 0, 0}, 2, 0},
      {"G18 G0 Z10\nG3 X10 Z0 R10 F100", {10, 0, 0}, {0, 0, 0}, 2, 0},
      // Clockwise in G18 puts the short arc's centre at X10 Z10.
      {"G18 G0 Z10\nG2 X10 Z0 R10 F100", {10, 0, 0}, {10, 0, 10}, 2, 0},
      {"G18 G0 Z10\nG2 X10 Z0 I10 F100", {10, 0, 0}, {10, 0, 10}, 2, 0},
      {"G19 G0 Y10\nG3 Y0 Z10 J-10 K0 F100", {0, 0, 10}, {0, 0, 0}, 1, 2},
      {"G19 G0 Y10\nG3 Y0 Z10 R10 F100", {0, 0, 10}, {0, 0, 0}, 1, 2},
      {"G19 G0 Y10\nG2 Y0 Z10 R-10 F100", {0, 0, 10}, {0, 0, 0}, 1, 2},
  };
  for (const case_t& c : cases) {
    SCOPED_TRACE(c.program);
    const program_t p = test::ngc(c.program);
    ASSERT_GT(p.moves.size(), 2u);
    EXPECT_EQ(p.moves.back().kind, move_kind::arc_segment);
    expect_point(p.moves.back().end, c.end, 1e-12);
    expect_on_circle(p, c.centre, 10, c.a, c.b);
  }
}

TEST(NgcInterpreter, ArcSenseDecidesWhichWayRound) {
  // Both go from (10, 0) to (0, 10) about the origin; clockwise passes
  // through negative Y.
  const program_t ccw = test::ngc("G0 X10\nG3 X0 Y10 I-10 F100");
  const program_t cw = test::ngc("G0 X10\nG2 X0 Y10 I-10 F100");
  double ccw_min_y = 0;
  double cw_min_y = 0;
  for (const move_t& m : ccw.moves) ccw_min_y = std::min(ccw_min_y, m.end[1]);
  for (const move_t& m : cw.moves) cw_min_y = std::min(cw_min_y, m.end[1]);
  EXPECT_GT(ccw_min_y, -1e-9);
  EXPECT_NEAR(cw_min_y, -10, 0.01);
  EXPECT_GT(cw.moves.size(), 2 * ccw.moves.size());
}

TEST(NgcInterpreter, FullCircleHelixAndAbsoluteCentre) {
  const program_t circle = test::ngc("G0 X10\nG2 I-10 F100");
  ASSERT_GT(circle.moves.size(), 8u);
  expect_point(circle.moves.back().end, {10, 0, 0}, 0);
  expect_on_circle(circle, {0, 0, 0}, 10, 0, 1);

  // Two turns down 6 mm: the path crosses the negative X axis a quarter
  // and three quarters of the way down.
  const program_t helix = test::ngc("G0 X10\nG3 X10 Y0 Z-6 I-10 P2 F100");
  expect_point(helix.moves.back().end, {10, 0, -6}, 0);
  expect_on_circle(helix, {0, 0, 0}, 10, 0, 1);
  std::vector<double> crossings;
  for (const move_t& m : helix.moves) {
    if (m.start[0] < 0 && m.start[1] > 0 && m.end[1] <= 0) {
      const double t = m.start[1] / (m.start[1] - m.end[1]);
      crossings.push_back(m.start[2] + t * (m.end[2] - m.start[2]));
    }
  }
  ASSERT_EQ(crossings.size(), 2u);
  EXPECT_NEAR(crossings[0], -1.5, 1e-3);
  EXPECT_NEAR(crossings[1], -4.5, 1e-3);

  const program_t absolute = test::ngc("G90.1 G0 X15 Y5\nG3 X5 Y15 I5 J5 F100");
  expect_on_circle(absolute, {5, 5, 0}, 10, 0, 1);
  const program_t incremental = test::ngc("G91 G0 X10\nG3 X-10 Y10 I-10 F100");
  expect_point(incremental.moves.back().end, {0, 10, 0}, 1e-12);
}

TEST(NgcInterpreter, ChordToleranceComesFromTheCaller) {
  interp_options_t coarse;
  coarse.chord_tolerance = 0.1;
  interp_options_t fine;
  fine.chord_tolerance = 0.001;
  const char* quarter = "G0 X10\nG3 X0 Y10 I-10 F100";
  EXPECT_GT(test::ngc(quarter, fine).moves.size(), 3 * test::ngc(quarter, coarse).moves.size());
  interp_options_t none;
  none.chord_tolerance = 0;
  EXPECT_THROW(test::ngc(quarter, none), std::invalid_argument);
  for (const move_t& m : test::ngc(quarter, fine).moves) {
    if (m.kind != move_kind::arc_segment) continue;
    const vec3_t mid{(m.start[0] + m.end[0]) / 2, (m.start[1] + m.end[1]) / 2, 0};
    EXPECT_LE(10 - distance(mid, {0, 0, 0}), 0.001);
  }
}

TEST(NgcInterpreter, WorkOffsetsAndMachineCoordinates) {
  const program_t p = test::ngc(
      "#5221=100 #5242=50\n"
      "G0 X1\n"   // G54 is active from the start
      "G55 Y1\n"  // G55 moves only Y's origin here
      "G53 X0\n"  // machine coordinates for this block only
      "X2\n"
      "G10 L2 P1 X5\n"  // G54's X origin to 5
      "G54 X0\n"
      "G10 L20 P0 X1\n"  // the current position now reads X1
      "X2\n");
  ASSERT_EQ(p.moves.size(), 6u);
  expect_point(p.moves[0].end, {101, 0, 0});
  expect_point(p.moves[1].end, {101, 51, 0});
  expect_point(p.moves[2].end, {0, 51, 0});
  expect_point(p.moves[3].end, {2, 51, 0});  // G55 has no X offset
  expect_point(p.moves[4].end, {5, 51, 0});
  expect_point(p.moves[5].end, {6, 51, 0});
}

TEST(NgcInterpreter, ReturnHomePassesThroughTheGivenPoint) {
  const program_t p = test::ngc("#5163=50\nG0 X5 Y5 Z5\nG91 G28 Z2\nG90 G28\n");
  ASSERT_EQ(p.moves.size(), 4u);
  expect_point(p.moves[1].end, {5, 5, 7});
  expect_point(p.moves[2].end, {5, 5, 50});  // only Z was named
  expect_point(p.moves[3].end, {0, 0, 50});
}

TEST(NgcInterpreter, ToolChangeTakesTheToolChosenByT) {
  const tool_table_t table{{1, flat_tool(10)}, {2, ball_tool(6)}};
  interp_options_t options;
  options.tools = &table;
  options.tool = 1;
  const program_t p = test::ngc("G0 X1\nT2\nX2\nM6\nX3\nT1 M6 X4\n", options);
  ASSERT_EQ(p.moves.size(), 4u);
  EXPECT_EQ(p.moves[0].tool, 1);
  EXPECT_EQ(p.moves[1].tool, 1);
  EXPECT_EQ(p.moves[2].tool, 2);
  EXPECT_EQ(p.moves[3].tool, 1);
  EXPECT_EQ(test::ngc_error("G0 X1\nT9 M6\n", options), "prog.ngc:2: tool 9 is not in the tool table 'T9'");
}

TEST(NgcInterpreter, HarmlessModesAndProgramEnd) {
  const program_t p = test::ngc(
      "G17 G21 G40 G49 G54 G64 P0.01 G80 G90 G94 G97 G98\n"
      "G43 H1 S12000 M3 M8\nG61\nG4 P0.5\nG0 X1\nM5 M9\nM30\nG0 X2\n");
  ASSERT_EQ(p.moves.size(), 1u);
}

TEST(NgcInterpreter, UnsupportedOrWrongBlocksStopWithLineAndWord) {
  EXPECT_EQ(test::ngc_error("G41 X1"), "prog.ngc:1: unsupported word 'G41'");
  EXPECT_EQ(test::ngc_error("G0 X0\n\nG81 Z-1 R1"), "prog.ngc:3: unsupported word 'G81'");
  EXPECT_EQ(test::ngc_error("M98 P100"), "prog.ngc:1: unsupported word 'M98'");
  EXPECT_EQ(test::ngc_error("G1 X1"), "prog.ngc:1: feed rate is zero 'G1'");
  EXPECT_EQ(test::ngc_error("X1"), "prog.ngc:1: axis word without a motion mode 'X1'");
  EXPECT_EQ(test::ngc_error("G0 X1 Q5"), "prog.ngc:1: word not used by any code 'Q5'");
  EXPECT_EQ(test::ngc_error("G0 X1 A5"), "prog.ngc:1: word not used by any code 'A5'");
  EXPECT_EQ(test::ngc_error("G0 G1 X1"), "prog.ngc:1: two codes of one modal group in a block 'G1'");
  EXPECT_EQ(test::ngc_error("G0 X1 X2"), "prog.ngc:1: the letter appears twice in the block 'X2'");
  EXPECT_EQ(test::ngc_error("G1 F10 X1\nG2 X2 Y1"), "prog.ngc:2: an arc needs a centre (I J K) or a radius (R) 'G2'");
  EXPECT_EQ(test::ngc_error("G2 X2 I1 R1 F10"), "prog.ngc:1: an arc takes a centre or a radius, not both 'R1'");
  EXPECT_EQ(test::ngc_error("G2 X20 I5 F10"), "prog.ngc:1: arc end does not lie on the circle through its start 'G2'");
  EXPECT_EQ(test::ngc_error("G17 G2 X2 I1 K1 F10"), "prog.ngc:1: word not used by any code 'K1'");
  EXPECT_EQ(test::ngc_error("G91 G53 G0 X1"), "prog.ngc:1: G53 needs G90 'G53'");
  EXPECT_EQ(test::ngc_error("G1 X[1/0]"), "prog.ngc:1: division by zero 'X[1/0]'");
  EXPECT_EQ(test::ngc_error("G0 X#<undefined>"), "prog.ngc:1: parameter #<undefined> was never set 'X#<UNDEFINED>'");
  EXPECT_EQ(test::ngc_error("G1.5 X1"), "prog.ngc:1: unsupported word 'G1.5'");
}

}  // namespace
}  // namespace mill
