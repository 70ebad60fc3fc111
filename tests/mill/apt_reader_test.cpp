#include "interp/apt_reader.h"

#include <gtest/gtest.h>

#include <cmath>

#include "interp/tool_desc_parse.h"
#include "mill_test_support.h"

namespace mill {
namespace {

using test::expect_point;

TEST(AptReader, MovesRapidsAndFeedsUntilEnd) {
  const program_t p = test::apt(
      "PARTNO / BRACKET, OP 10 / ROUGH\n"
      "$$ comment line\n"
      "MULTAX\n"
      "CUTTER/10\n"
      "FEDRAT/200, MMPM\n"
      "RAPID\n"
      "GOTO/0,0,10\n"
      "GOTO / 0.0, 0.0, 0.0   $$ plunge\n"
      "goto/10,0,0,0,0,1\n"
      "END\n"
      "GOTO/5,5,5\n");
  ASSERT_EQ(p.moves.size(), 3u);
  EXPECT_EQ(p.files, std::vector<std::string>{"part.cls"});
  EXPECT_EQ(p.moves[0].kind, move_kind::rapid);  // RAPID covers one move only
  expect_point(p.moves[0].end, {0, 0, 10});
  EXPECT_EQ(p.moves[1].kind, move_kind::feed);
  EXPECT_EQ(p.moves[1].feed, 200);
  EXPECT_EQ(p.moves[1].line, 8u);
  expect_point(p.moves[2].end, {10, 0, 0});
  EXPECT_EQ(p.tools.at(0), flat_tool(10));
}

TEST(AptReader, ToolAxisMakesRotatingMoves) {
  const program_t p = test::apt("FEDRAT/100\nGOTO/0,0,0,0,0,1\nGOTO/10,0,0,0,1,1\nGOTO/10,0,0,1,0,0\n");
  ASSERT_EQ(p.moves.size(), 2u);
  expect_point(p.moves[0].axis_start, {0, 0, 1});
  expect_point(p.moves[0].axis_end, {0, std::sqrt(0.5), std::sqrt(0.5)});
  // A change of axis alone is still a move.
  expect_point(p.moves[1].start, p.moves[1].end);
  expect_point(p.moves[1].axis_end, {1, 0, 0});
}

TEST(AptReader, ContinuationUnitsAndRelativeMoves) {
  const program_t p = test::apt(
      "UNITS/INCHES\n"
      "FEDRAT/10\n"
      "GOTO/1, $\n"
      "  2, 3\n"
      "FEDRAT/10,MMPM\n"
      "GODLTA/0,0,-1\n"
      "GODLTA/2\n");  // along the tool axis
  ASSERT_EQ(p.moves.size(), 3u);
  EXPECT_EQ(p.moves[0].line, 3u);
  expect_point(p.moves[0].end, {25.4, 50.8, 76.2}, 1e-9);
  EXPECT_NEAR(p.moves[0].feed, 254, 1e-9);
  expect_point(p.moves[1].end, {25.4, 50.8, 50.8}, 1e-9);
  EXPECT_EQ(p.moves[1].feed, 10);
  expect_point(p.moves[2].end, {25.4, 50.8, 101.6}, 1e-9);
}

TEST(AptReader, GohomeReturnsToTheFromPoint) {
  const program_t p = test::apt("FROM/0,0,50\nFEDRAT/100\nGOTO/1,1,1\nRAPID\nGOHOME\nFINI\n");
  ASSERT_EQ(p.moves.size(), 2u);
  expect_point(p.moves[0].start, {0, 0, 50});
  EXPECT_EQ(p.moves[1].kind, move_kind::rapid);
  expect_point(p.moves[1].end, {0, 0, 50});
}

TEST(AptReader, CuttersDefineTheProgramsTools) {
  const program_t p = test::apt(
      "LOADTL/3\nCUTTER/10,2\nFEDRAT/100\nGOTO/1,0,0\n"
      "CUTTER/10,2\nGOTO/2,0,0\n"  // the same cutter again: same tool
      "CUTTER/6,3\nGOTO/3,0,0\n"   // a new cutter: a new tool
      "LOADTL/1\nCUTTER/8,1,3,1,10,5,40\nGOTO/4,0,0\n");
  ASSERT_EQ(p.moves.size(), 4u);
  EXPECT_EQ(p.moves[0].tool, 3);
  EXPECT_EQ(p.moves[1].tool, 3);
  EXPECT_EQ(p.moves[2].tool, 4);
  EXPECT_EQ(p.moves[3].tool, 1);
  EXPECT_EQ(p.tools.at(3), bull_tool(10, 2));
  EXPECT_EQ(p.tools.at(4), ball_tool(6));
  EXPECT_EQ(p.tools.at(1), apt_tool({8, 1, 3, 1, 10, 5, 40}));
}

TEST(AptReader, UnsupportedOrMalformedStatementsAreNamed) {
  EXPECT_EQ(test::apt_error("FEDRAT/100\nCIRCLE/0,0,0,0,0,1,5\n"), "part.cls:2: unsupported statement 'CIRCLE'");
  EXPECT_EQ(test::apt_error("FEDRAT/100\nGOTO/1,2\n"), "part.cls:2: wrong number of values 'GOTO'");
  EXPECT_EQ(test::apt_error("FEDRAT/100\nGOTO/1,a,3\n"), "part.cls:2: expected a number 'A'");
  EXPECT_EQ(test::apt_error("GOTO/1,2,3\n"), "part.cls:1: feed move before any FEDRAT 'GOTO'");
  EXPECT_EQ(test::apt_error("FEDRAT/0.1,IPR\n"), "part.cls:1: unsupported feed mode 'IPR'");
  EXPECT_EQ(test::apt_error("FEDRAT/100\nGOTO/1,2,3,0,0,0\n"), "part.cls:2: tool axis of zero length 'GOTO'");
  EXPECT_EQ(test::apt_error("CUTTER/10,7\n"),
            "part.cls:1: corner radius must lie between 0 and half the diameter 'CUTTER'");
  EXPECT_EQ(test::apt_error("UNITS/FEET\n"), "part.cls:1: unsupported units 'FEET'");
  EXPECT_EQ(test::apt_error("MSYS/10,0,0,1,0,0,0,1,0\n"), "part.cls:1: unsupported coordinate system 'MSYS'");
  EXPECT_NO_THROW(test::apt("MSYS/0,0,0,1,0,0,0,1,0\nSPINDL/1000,CLW\nCOOLNT/ON\nPPRINT TEXT, WITH / MARKS\n"));
}

}  // namespace
}  // namespace mill
