#pragma once

// Shared ground of the display tests: one init_disp per test process (on the
// main thread, which keeps its context), a capture of every log line, and the
// reason GL tests skip on a machine without EGL.

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace disp_test {

// Empty when the process has a GL context; otherwise why not.
const std::string& gl_skip_reason();

// What init_disp gave for the main thread's context.
double init_depth_max();

// Log lines written by init_disp.
const std::vector<std::string>& init_log_lines();

// Log lines written since the last clear_log.
std::vector<std::string> log_lines();
void clear_log();

// Runs fn on a thread of its own, which starts without a context.
template <class F>
void on_new_thread(F&& fn) {
  std::thread(std::forward<F>(fn)).join();
}

}  // namespace disp_test

#define QV_REQUIRE_GL()                                                                                             \
  do {                                                                                                              \
    if (!::disp_test::gl_skip_reason().empty()) GTEST_SKIP() << "no GL context: " << ::disp_test::gl_skip_reason(); \
  } while (0)
