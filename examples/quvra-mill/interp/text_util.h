#pragma once

// Small text helpers shared by the readers of programs and tool tables.

#include <string>
#include <string_view>
#include <vector>

namespace mill {

// Without blanks, tabs and carriage returns at either end.
std::string_view trim(std::string_view s);

std::string upper(std::string_view s);
std::string lower(std::string_view s);

// The lines of text without their '\n'; line n of a file is element n - 1.
// A final line without '\n' counts; an empty text has no lines.
std::vector<std::string_view> split_lines(std::string_view text);

}  // namespace mill
