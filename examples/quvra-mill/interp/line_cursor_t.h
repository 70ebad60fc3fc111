#pragma once

// A read position in one normalised NGC line: lower case, comments and
// blanks already removed, as the language ignores blanks everywhere.

#include <cstddef>
#include <string_view>

namespace mill {

struct line_cursor_t {
  std::string_view text;
  std::size_t pos = 0;
  int depth = 0;  // values being read inside one another at pos

  bool at_end() const { return pos >= text.size(); }
  char peek(std::size_t ahead = 0) const { return pos + ahead < text.size() ? text[pos + ahead] : '\0'; }
  bool accept(char c) {
    if (peek() != c) return false;
    ++pos;
    return true;
  }
  // Throws std::invalid_argument when the next character is not c.
  void expect(char c);
  // The run of letters at the cursor, consumed.
  std::string_view take_letters();
};

}  // namespace mill
