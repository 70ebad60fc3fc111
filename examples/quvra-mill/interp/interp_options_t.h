#pragma once

// What the host tells the interpreter before a run.

#include <cstddef>
#include <cstdint>

#include "interp/move_t.h"
#include "interp/tool_table.h"

namespace mill {

// How far from the origin, in mm along each axis, anything a machine is to
// mean may lie: positions, stocks, tools.
inline constexpr double machine_limit_mm = 1e6;

struct interp_options_t {
  // Largest distance, in mm, between an arc and its chords. The cutting
  // stage cannot see finer than its cells, so a quarter of the cell width
  // keeps the chords invisible in the result. Must be positive: run_ngc
  // throws std::invalid_argument otherwise.
  double chord_tolerance = 0.01;
  vec3_t start{};  // machine position in mm before the first move
  int tool = 0;    // tool in the spindle before any change
  // When set, a T word must name a tool of this table. Not owned; must
  // outlive the run.
  const tool_table_t* tools = nullptr;
  // Blocks and control lines a run may execute before it is taken for an
  // endless loop.
  std::uint64_t max_steps = 100'000'000;
  // What a machine can mean. Every point a move reaches lies within
  // max_coordinate mm of the origin along each axis, and a run makes at most
  // max_moves moves, an arc's chords counted one by one (at about 128 bytes
  // a move, the default list takes up to 1.3 GB). A program that goes
  // beyond either stops at the line that did.
  double max_coordinate = machine_limit_mm;
  std::size_t max_moves = 10'000'000;
};

}  // namespace mill
