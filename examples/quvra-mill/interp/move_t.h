#pragma once

// One straight piece of tool path, the unit the cutting stage consumes.
// Positions are millimetres in machine coordinates: the active work offset
// is already added, and inch programs are already converted. An arc reaches
// the cutter as a run of arc_segment moves, each a chord of the true arc.

#include <array>
#include <cstdint>

namespace mill {

using vec3_t = std::array<double, 3>;

enum class move_kind : std::uint8_t {
  rapid,
  feed,
  arc_segment,
};

struct move_t {
  std::uint32_t file = 0;  // index into program_t::files
  std::uint32_t line = 0;  // 1-based line of the block or statement
  move_kind kind = move_kind::feed;
  vec3_t start{};
  vec3_t end{};
  // Unit vectors; they differ only on a rotating move of a five-axis
  // program. G-code programs always give (0, 0, 1).
  vec3_t axis_start{0, 0, 1};
  vec3_t axis_end{0, 0, 1};
  double feed = 0;  // mm/min; 0 on rapids, whose speed is the machine's
  int tool = 0;
};

}  // namespace mill
