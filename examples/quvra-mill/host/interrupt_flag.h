#pragma once

// Ctrl-C during a run: the first stops the run after the move being cut, so
// that what was cut is still written; a second ends the process at once, for
// a user who does not want to wait.

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

}  // namespace mill
