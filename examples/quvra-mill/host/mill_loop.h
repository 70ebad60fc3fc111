#pragma once

// The move loop: every move of a program cut in order, each from its start
// pose to its end pose, with a record of what it did. The cut itself is
// handed in, so the loop knows nothing of stocks or tools.

#include <cstdint>
#include <functional>
#include <vector>

#include "host/progress_view.h"
#include "host/tool_pose.h"
#include "interp/move_t.h"

namespace mill {

struct cut_outcome_t {
  bool touched = false;
  double contact_area = 0;  // mm^2, where tool and stock met
};

struct move_record_t {
  std::uint32_t file = 0;
  std::uint32_t line = 0;
  move_kind kind = move_kind::feed;
  double length = 0;  // mm the tip travels
  cut_outcome_t outcome;
};

struct loop_result_t {
  std::vector<move_record_t> records;  // one per move cut, in order
  bool interrupted = false;            // stopped before the last move
  double seconds = 0;                  // spent cutting
};

using move_cutter_t = std::function<cut_outcome_t(const move_t& move, const pose_t& start, const pose_t& end)>;

// Cuts moves in order. stop is asked after each move, never during one, so
// a stop leaves the stock whole at a move boundary. The first move starts
// where the machine stood before the program, which the program does not
// say: it is cut as the tool standing at its end, not swept from a guess.
loop_result_t run_moves(const std::vector<move_t>& moves, const move_cutter_t& cut, const std::function<bool()>& stop,
                        progress_view_t& progress);

}  // namespace mill
