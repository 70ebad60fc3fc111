#include "interp/apt_statement_t.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "interp/text_util.h"

namespace mill {

namespace {

constexpr std::array<std::string_view, 4> text_statements{"PARTNO", "PPRINT", "INSERT", "TPRINT"};

apt_param_t read_param(std::string_view item) {
  apt_param_t p;
  item = trim(item);
  if (!item.empty() && item.front() == '+') item.remove_prefix(1);
  const auto [end, ec] = std::from_chars(item.data(), item.data() + item.size(), p.number);
  // from_chars also reads "nan" and "inf", which no position or feed can be.
  p.is_number = ec == std::errc() && end == item.data() + item.size() && !item.empty() && std::isfinite(p.number);
  p.word = upper(item);
  return p;
}

apt_statement_t split_statement(std::string_view text, int line) {
  apt_statement_t s;
  s.line = line;
  const auto slash = text.find('/');
  s.major = upper(trim(text.substr(0, slash)));
  const bool free_text = std::any_of(text_statements.begin(), text_statements.end(),
                                     [&](std::string_view t) { return s.major.starts_with(t); });
  if (free_text) {
    s.major = s.major.substr(0, 6);
    return s;
  }
  if (slash == std::string_view::npos) return s;
  std::string_view rest = text.substr(slash + 1);
  while (true) {
    const auto comma = rest.find(',');
    s.params.push_back(read_param(rest.substr(0, comma)));
    if (comma == std::string_view::npos) return s;
    rest.remove_prefix(comma + 1);
  }
}

}  // namespace

std::vector<apt_statement_t> read_apt_statements(std::string_view text) {
  std::vector<apt_statement_t> out;
  std::string pending;
  int start_line = 0;
  int number = 0;
  for (std::string_view line : split_lines(text)) {
    ++number;
    line = trim(line.substr(0, line.find("$$")));
    if (pending.empty()) start_line = number;
    const bool continued = !line.empty() && line.back() == '$';
    if (continued) line.remove_suffix(1);
    pending += line;
    if (continued) continue;
    if (!trim(pending).empty()) out.push_back(split_statement(pending, start_line));
    pending.clear();
  }
  if (!trim(pending).empty()) out.push_back(split_statement(pending, start_line));
  return out;
}

}  // namespace mill
