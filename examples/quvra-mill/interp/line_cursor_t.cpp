#include "interp/line_cursor_t.h"

#include <stdexcept>
#include <string>

namespace mill {

void line_cursor_t::expect(char c) {
  if (!accept(c)) throw std::invalid_argument(std::string("expected '") + c + "'");
}

std::string_view line_cursor_t::take_letters() {
  const std::size_t start = pos;
  while (peek() >= 'a' && peek() <= 'z') ++pos;
  return text.substr(start, pos - start);
}

}  // namespace mill
