#include "host/run_defaults.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "interp/tool_desc_parse.h"

namespace mill {
namespace {

move_t move(move_kind kind, vec3_t start, vec3_t end) {
  move_t m;
  m.kind = kind;
  m.start = start;
  m.end = end;
  return m;
}

TEST(RunDefaults, ABareRunTakesA6mmFlatMill40mmLongAnd02mmCellsAndSaysSo) {
  std::vector<std::string> notes;
  const tooling_t t = choose_tooling({}, notes);
  EXPECT_EQ(t.cell, 0.2);
  EXPECT_EQ(t.tool, flat_tool(6));
  EXPECT_EQ(t.tool_length, 40);
  ASSERT_EQ(notes.size(), 3u);
  EXPECT_NE(notes[0].find("cell: 0.2 mm"), std::string::npos);
  EXPECT_NE(notes[1].find("6 mm flat end mill"), std::string::npos);
  EXPECT_NE(notes[2].find("tool length: 40 mm"), std::string::npos);
}

TEST(RunDefaults, WhatTheUserGaveIsNotReportedAsADefault) {
  mill_options_t o;
  o.cell = 0.5;
  o.tool = ball_tool(10);
  o.tool_length = 30;
  std::vector<std::string> notes;
  const tooling_t t = choose_tooling(o, notes);
  EXPECT_EQ(t.cell, 0.5);
  EXPECT_EQ(t.tool, ball_tool(10));
  EXPECT_TRUE(notes.empty());
}

TEST(RunDefaults, ACutterWithItsOwnHeightKeepsIt) {
  const tooling_t t{0.2, flat_tool(6), 40};
  EXPECT_EQ(cutter_length(apt_tool({10, 1, 4, 1, 0, 0, 25}), t), 25);
  EXPECT_EQ(cutter_length(flat_tool(6), t), 40);
}

TEST(RunDefaults, TheStockSpansTheFeedMovesNotTheRapids) {
  program_t p;
  p.moves = {move(move_kind::rapid, {-50, -50, 100}, {0, 0, 20}), move(move_kind::feed, {0, 0, 20}, {40, 0, 5}),
             move(move_kind::arc_segment, {40, 0, 5}, {50, 30, 5}),
             move(move_kind::rapid, {50, 30, 5}, {200, 200, 200})};
  EXPECT_EQ(feed_box(p, 6), (std::array<double, 6>{0, 0, 5, 50, 30, 20}));
}

TEST(RunDefaults, AFlatProgramGetsAStockAsThickAsTheTool) {
  program_t p;
  p.moves = {move(move_kind::feed, {0, 0, -2}, {40, 30, -2})};
  EXPECT_EQ(feed_box(p, 6), (std::array<double, 6>{0, 0, -5, 40, 30, 1}));
  std::vector<std::string> notes;
  const stock_spec_t s = choose_stock({}, p, 6, notes);
  EXPECT_EQ(s.kind, stock_kind::box);
  ASSERT_EQ(notes.size(), 1u);
  EXPECT_EQ(notes[0].rfind("stock: box:0,0,-5,40,30,1", 0), 0u);
}

TEST(RunDefaults, AProgramOfRapidsAloneCannotSizeAStock) {
  program_t p;
  p.moves = {move(move_kind::rapid, {0, 0, 0}, {10, 10, 10})};
  EXPECT_THROW(feed_box(p, 6), std::invalid_argument);
}

}  // namespace
}  // namespace mill
