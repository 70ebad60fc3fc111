#pragma once

// Ctrl-C during a run: the first stops the run after the move being cut, so
// that what was cut is still written; a second ends the process at once, for
// a user who does not want to wait, and removes the file being written so
// that no cut-off file is left behind.

namespace mill {

// Installs the handler for SIGINT and clears the flag; the guard puts back
// the previous handler when it goes.
class interrupt_guard_t {
 public:
  interrupt_guard_t();
  ~interrupt_guard_t();
  interrupt_guard_t(const interrupt_guard_t&) = delete;
  interrupt_guard_t& operator=(const interrupt_guard_t&) = delete;
};

// True once SIGINT arrived under a guard.
bool interrupt_requested();

// Names the file a second Ctrl-C removes for as long as the guard lives; one
// at a time. path must outlive the guard.
class doomed_file_guard_t {
 public:
  explicit doomed_file_guard_t(const char* path);
  ~doomed_file_guard_t();
  doomed_file_guard_t(const doomed_file_guard_t&) = delete;
  doomed_file_guard_t& operator=(const doomed_file_guard_t&) = delete;
};

}  // namespace mill
