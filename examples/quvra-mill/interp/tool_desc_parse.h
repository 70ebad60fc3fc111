#pragma once

// Tool descriptions from text, as the command line and the tool table give
// them:
//   flat:D   ball:D   bull:D,R   drill:D,ANGLE (included point angle)
//   apt:D,R,E,F,ALPHA,BETA,H   or the seven numbers alone.
// Each maker checks its numbers; all throw std::invalid_argument with the
// reason, and the caller adds where the text came from.

#include <array>
#include <string_view>

#include "interp/tool_desc_t.h"

namespace mill {

tool_desc_t flat_tool(double d);
tool_desc_t ball_tool(double d);
tool_desc_t bull_tool(double d, double r);
tool_desc_t drill_tool(double d, double point_angle);
tool_desc_t apt_tool(const std::array<double, 7>& params);

tool_desc_t parse_tool_desc(std::string_view text);

}  // namespace mill
