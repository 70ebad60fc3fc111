#pragma once

// How a run shows its progress: a bar redrawn in place on a terminal, and on
// anything else (a log, a pipe, CI) a plain line at every tenth of the moves,
// so that files stay readable.

#include <chrono>
#include <cstddef>
#include <ostream>

namespace mill {

class progress_view_t {
 public:
  progress_view_t(std::ostream& out, bool terminal, std::size_t total);

  // done moves of total are cut; cheap enough to call after every move.
  void update(std::size_t done);

  // Ends the bar's line; plain output needs nothing more.
  void finish();

 private:
  void draw_bar(std::size_t done);

  std::ostream& out_;
  bool terminal_;
  std::size_t total_;
  int last_tenth_ = 0;
  std::chrono::steady_clock::time_point start_;
  std::chrono::steady_clock::time_point last_draw_;
};

}  // namespace mill
