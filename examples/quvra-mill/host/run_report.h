#pragma once

// What a run writes about itself: the table of moves and the summary.

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "host/mill_loop.h"

namespace mill {

struct run_summary_t {
  std::size_t moves_total = 0;  // in the program
  std::size_t moves_cut = 0;
  std::size_t moves_touching = 0;
  bool interrupted = false;
  double removed_volume = 0;  // mm^3
  double seconds = 0;         // spent cutting
  double cell = 0;            // mm, the stock's finest cells
};

// One row per record under the header
//   file,line,kind,length_mm,contact_area_mm2,touched
// where file is the program file's name (files indexes them) and kind is
// rapid, feed or arc.
void write_moves_csv(std::ostream& out, const std::vector<move_record_t>& records,
                     const std::vector<std::string>& files);

run_summary_t summarize(const loop_result_t& loop, std::size_t moves_total, double removed_volume, double cell);

// Lines of "name: value", the same text on screen and in summary.txt.
std::string summary_text(const run_summary_t& s);

}  // namespace mill
