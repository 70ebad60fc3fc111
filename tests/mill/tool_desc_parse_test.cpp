#include "interp/tool_desc_parse.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace mill {
namespace {

TEST(ToolDescParse, SimpleShapesFillTheAptParameters) {
  const tool_desc_t flat = parse_tool_desc("flat:10");
  EXPECT_EQ(flat.shape, tool_shape::flat);
  EXPECT_EQ(flat, (tool_desc_t{tool_shape::flat, 10, 0, 5, 0, 0, 0, 0}));

  EXPECT_EQ(parse_tool_desc("ball:6"), (tool_desc_t{tool_shape::ball, 6, 3, 0, 3, 0, 0, 0}));
  EXPECT_EQ(parse_tool_desc(" bull: 12 , 2 "), (tool_desc_t{tool_shape::bull, 12, 2, 4, 2, 0, 0, 0}));
  // A 118 degree point leaves a bottom 31 degrees above the horizontal.
  EXPECT_EQ(parse_tool_desc("drill:8,118"), (tool_desc_t{tool_shape::drill, 8, 0, 0, 0, 31, 0, 0}));
}

TEST(ToolDescParse, BullWithExtremeRadiusIsTheSimplerShape) {
  EXPECT_EQ(bull_tool(10, 0).shape, tool_shape::flat);
  EXPECT_EQ(bull_tool(10, 5).shape, tool_shape::ball);
}

TEST(ToolDescParse, SevenAptParametersWithOrWithoutPrefix) {
  const tool_desc_t expected{tool_shape::apt, 10, 2, 3, 2, 5, 10, 50};
  EXPECT_EQ(parse_tool_desc("10,2,3,2,5,10,50"), expected);
  EXPECT_EQ(parse_tool_desc("apt:10,2,3,2,5,10,50"), expected);
}

TEST(ToolDescParse, RejectsImpossibleOrMalformedTools) {
  for (const char* bad : {"flat:-1", "ball:0", "bull:10,6", "drill:8,180", "cone:5", "flat:1,2", "flat:abc",
                          "flat:", "bull:10", "10,2,4,2,0,0,50", "10,2,3,2,90,0,50", "10,2,3,2,0,0"})
    EXPECT_THROW(parse_tool_desc(bad), std::invalid_argument) << bad;
}

}  // namespace
}  // namespace mill
