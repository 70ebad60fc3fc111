#include "interp/move_limits.h"

#include <array>
#include <charconv>
#include <cmath>
#include <stdexcept>
#include <string>

namespace mill {

void check_reach(const vec3_t& point, const interp_options_t& options) {
  for (const double v : point) {
    if (std::abs(v) <= options.max_coordinate) continue;
    std::array<char, 400> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), options.max_coordinate,
                                   std::chars_format::fixed).ptr;
    throw std::invalid_argument("position beyond the machine's limit of +-" + std::string(text.data(), end) +
                                " mm");
  }
}

void check_room(std::size_t made, std::size_t count, const interp_options_t& options) {
  if (made > options.max_moves || count > options.max_moves - made)
    throw std::invalid_argument("more than " + std::to_string(options.max_moves) +
                                " moves, the limit of one run");
}

}  // namespace mill
