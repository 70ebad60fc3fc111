#include "interp/tool_table.h"

#include <gtest/gtest.h>

#include "interp/tool_desc_parse.h"
#include "mill_test_support.h"

namespace mill {
namespace {

TEST(ToolTable, ReadsNumbersAndDescriptionsSkippingComments) {
  const tool_table_t table = parse_tool_table(
      "; tools for the bracket job\n"
      "T1 flat:10   ; roughing\n"
      "\n"
      "  t7\t12,1,5,1,0,0,40\r\n"
      "T2 ball:6\n",
      "tools.tbl");
  ASSERT_EQ(table.size(), 3u);
  EXPECT_EQ(table.at(1), flat_tool(10));
  EXPECT_EQ(table.at(2), ball_tool(6));
  EXPECT_EQ(table.at(7), apt_tool({12, 1, 5, 1, 0, 0, 40}));
}

TEST(ToolTable, ErrorsNameFileLineAndWord) {
  EXPECT_EQ(test::error_of([] { parse_tool_table("T1 flat:10\n\nT1 ball:2\n", "t.tbl"); }),
            "t.tbl:3: tool number given twice 'T1'");
  EXPECT_EQ(test::error_of([] { parse_tool_table("T4 ball:-2\n", "t.tbl"); }),
            "t.tbl:1: diameter must be positive 'ball:-2'");
  EXPECT_EQ(test::error_of([] { parse_tool_table("X4 ball:2\n", "t.tbl"); }),
            "t.tbl:1: expected a tool number like T3 'X4'");
}

TEST(ToolTable, MissingFileIsReportedWithItsPath) {
  const std::string message = test::error_of([] { read_tool_table("/nonexistent/tools.tbl"); });
  EXPECT_EQ(message, "/nonexistent/tools.tbl:0: cannot open the file");
}

}  // namespace
}  // namespace mill
