#include "host/interrupt_flag.h"

#include <unistd.h>

#include <atomic>
#include <csignal>

namespace mill {

namespace {

volatile std::sig_atomic_t interrupted = 0;
// Read by the handler, so it must be lock-free to be safe there.
std::atomic<const char*> doomed{nullptr};
static_assert(std::atomic<const char*>::is_always_lock_free);
struct sigaction previous {};

extern "C" void on_interrupt(int signal) {
  if (interrupted == 0) {
    interrupted = 1;
    return;
  }
  // Only async-signal-safe calls from here: unlink, signal, raise.
  if (const char* path = doomed.load()) unlink(path);
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

}  // namespace

interrupt_guard_t::interrupt_guard_t() {
  interrupted = 0;
  struct sigaction action {};
  action.sa_handler = on_interrupt;
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, &previous);
}

interrupt_guard_t::~interrupt_guard_t() { sigaction(SIGINT, &previous, nullptr); }

bool interrupt_requested() { return interrupted != 0; }

doomed_file_guard_t::doomed_file_guard_t(const char* path) { doomed.store(path); }

doomed_file_guard_t::~doomed_file_guard_t() { doomed.store(nullptr); }

}  // namespace mill
