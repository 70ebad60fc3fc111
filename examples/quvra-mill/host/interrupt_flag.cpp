#include "host/interrupt_flag.h"

#include <csignal>

namespace mill {

namespace {

volatile std::sig_atomic_t interrupted = 0;
struct sigaction previous {};

extern "C" void on_interrupt(int) { interrupted = 1; }

}  // namespace

interrupt_guard_t::interrupt_guard_t() {
  interrupted = 0;
  struct sigaction action {};
  action.sa_handler = on_interrupt;
  sigemptyset(&action.sa_mask);
  // The handler runs once; the next Ctrl-C finds the default and ends the
  // process.
  action.sa_flags = SA_RESETHAND;
  sigaction(SIGINT, &action, &previous);
}

interrupt_guard_t::~interrupt_guard_t() { sigaction(SIGINT, &previous, nullptr); }

bool interrupt_requested() { return interrupted != 0; }

}  // namespace mill
