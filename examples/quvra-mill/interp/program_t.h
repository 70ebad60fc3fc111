#pragma once

// What a run of the interpreter hands the host.

#include <string>
#include <vector>

#include "interp/move_t.h"
#include "interp/tool_table.h"

namespace mill {

struct program_t {
  std::vector<std::string> files;  // move_t::file indexes these
  std::vector<move_t> moves;
  // Cutters the program defines itself (APT CUTTER), by the tool number its
  // moves carry. G-code programs leave this empty: their tools come from
  // the host's tool table.
  tool_table_t tools;
};

}  // namespace mill
