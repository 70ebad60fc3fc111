#include "host/mill_args.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace mill {
namespace {

std::string error_of(const std::vector<std::string>& args) {
  try {
    parse_mill_args(args);
  } catch (const std::invalid_argument& e) {
    return e.what();
  }
  ADD_FAILURE() << "expected std::invalid_argument";
  return {};
}

TEST(MillArgs, NoArgumentsMeanTheSampleWithEveryDefault) {
  const mill_options_t o = parse_mill_args({});
  EXPECT_TRUE(o.program.empty());
  EXPECT_EQ(o.stock.kind, stock_kind::feed_box);
  EXPECT_FALSE(o.cell || o.tool || o.tool_length);
  EXPECT_FALSE(o.help);
}

TEST(MillArgs, ReadsEveryOptionInBothSpellings) {
  const mill_options_t o =
      parse_mill_args({"part.ngc", "--stock=box:0,0,-20,50,40,0", "--cell", "0.1", "--tool", "ball:8",
                       "--tool-length=55", "--tool-table", "tools.txt", "--out", "result"});
  EXPECT_EQ(o.program, "part.ngc");
  EXPECT_EQ(o.stock.kind, stock_kind::box);
  EXPECT_EQ(o.stock.box, (std::array<double, 6>{0, 0, -20, 50, 40, 0}));
  EXPECT_EQ(o.cell, 0.1);
  ASSERT_TRUE(o.tool);
  EXPECT_EQ(o.tool->shape, tool_shape::ball);
  EXPECT_EQ(o.tool->d, 8);
  EXPECT_EQ(o.tool_length, 55);
  EXPECT_EQ(o.tool_table, "tools.txt");
  EXPECT_EQ(o.out_dir, "result");
}

TEST(MillArgs, AStockThatIsNotABoxIsAnStlPath) {
  const stock_spec_t s = parse_stock_spec("blank.stl");
  EXPECT_EQ(s.kind, stock_kind::stl);
  EXPECT_EQ(s.stl_path, "blank.stl");
  EXPECT_EQ(parse_stock_spec("BOX:1,2,3,4,5,6").kind, stock_kind::box);
}

TEST(MillArgs, MistakesNameTheOptionAndTheFault) {
  EXPECT_EQ(error_of({"--feed", "3"}), "unknown option '--feed' (see --help)");
  EXPECT_EQ(error_of({"--cell"}), "--cell needs a value");
  EXPECT_EQ(error_of({"--cell", "fine"}), "--cell: 'fine' is not a number");
  EXPECT_EQ(error_of({"--cell", "-0.2"}), "--cell must be positive, not -0.2");
  EXPECT_EQ(error_of({"--tool-length=inf"}), "--tool-length: 'inf' is not a number");
  EXPECT_EQ(error_of({"a.ngc", "b.ngc"}), "one program at a time: 'a.ngc' and 'b.ngc'");
  EXPECT_EQ(error_of({"--stock", ""}), "--stock needs box:X0,Y0,Z0,X1,Y1,Z1 or an STL file");
}

TEST(MillArgs, ABoxNeedsSixNumbersAndPositiveSides) {
  const std::string six = "--stock box takes six numbers X0,Y0,Z0,X1,Y1,Z1";
  EXPECT_EQ(error_of({"--stock", "box:0,0,0,1,1"}), six);
  EXPECT_EQ(error_of({"--stock", "box:0,0,0,1,1,1,1"}), six);
  EXPECT_EQ(error_of({"--stock", "box:0,0,0,1,x,1"}), "--stock box: 'x' is not a number");
  EXPECT_EQ(error_of({"--stock", "box:0,0,5,1,1,5"}), "--stock box: each maximum must exceed its minimum (axis Z)");
}

TEST(MillArgs, ABadToolSaysWhatTheDescriptionWas) {
  EXPECT_EQ(error_of({"--tool", "flat:-3"}), "--tool flat:-3: diameter must be positive");
}

}  // namespace
}  // namespace mill
