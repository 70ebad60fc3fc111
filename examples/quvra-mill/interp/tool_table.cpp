#include "interp/tool_table.h"

#include <charconv>
#include <stdexcept>

#include "interp/source_error_t.h"
#include "interp/text_file.h"
#include "interp/text_util.h"
#include "interp/tool_desc_parse.h"

namespace mill {

namespace {

int parse_tool_number(std::string_view word) {
  int number = -1;
  const char* end = word.data() + word.size();
  const bool has_t = word.size() > 1 && (word[0] == 'T' || word[0] == 't');
  const auto [stop, ec] = has_t ? std::from_chars(word.data() + 1, end, number) : std::from_chars_result{};
  if (!has_t || ec != std::errc() || stop != end || number < 0)
    throw std::invalid_argument("expected a tool number like T3");
  return number;
}

}  // namespace

tool_table_t parse_tool_table(std::string_view text, const std::string& file) {
  tool_table_t table;
  int line_no = 0;
  for (std::string_view line : split_lines(text)) {
    ++line_no;
    line = trim(line.substr(0, line.find(';')));
    if (line.empty()) continue;
    const auto gap = line.find_first_of(" \t");
    const std::string_view number_word = line.substr(0, gap);
    const std::string_view desc = gap == std::string_view::npos ? "" : trim(line.substr(gap));
    std::string_view blamed = number_word;
    try {
      const int number = parse_tool_number(number_word);
      blamed = desc;
      if (!table.emplace(number, parse_tool_desc(desc)).second) {
        blamed = number_word;
        throw std::invalid_argument("tool number given twice");
      }
    } catch (const std::invalid_argument& e) {
      throw source_error_t(file, line_no, std::string(blamed), e.what());
    }
  }
  return table;
}

tool_table_t read_tool_table(const std::string& path) { return parse_tool_table(read_text_file(path), path); }

}  // namespace mill
