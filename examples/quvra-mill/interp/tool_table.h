#pragma once

// The tool table: tool numbers to cutters, for programs that change tools.
// The file has one tool a line, the number as a T word and then a tool
// description as the command line takes it:
//   T1 flat:10      ; roughing end mill
//   T2 ball:6
//   T7 12,1,5,1,0,0,40
// ';' starts a comment; blank lines are ignored.

#include <map>
#include <string>
#include <string_view>

#include "interp/tool_desc_t.h"

namespace mill {

using tool_table_t = std::map<int, tool_desc_t>;

// Both throw source_error_t with the file, the line and the offending word.
tool_table_t parse_tool_table(std::string_view text, const std::string& file);
tool_table_t read_tool_table(const std::string& path);

}  // namespace mill
