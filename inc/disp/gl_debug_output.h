#pragma once

// Driver diagnostics reach the log through GL debug output: GL failures are
// never fatal, and this is where they become visible. QV_GL_DEBUG chooses the
// mode: "off" or "0" leaves debug output off, "async" lets the driver report
// late (and perhaps from its own thread), anything else reports
// synchronously, so that a message lands on the stack of the call that
// caused it.

#include <atomic>
#include <string>
#include <string_view>

#include "disp/gl.h"

namespace disp {

// Installs the logging callback on the current context. False, so that the
// next lock tries again, until the loader has run; true otherwise, including
// when the driver has no debug output or QV_GL_DEBUG switched it off.
bool install_gl_debug_output();

// Turns driver messages into log lines under a budget. A driver can emit a
// message per draw call; past the budget the messages are dropped, after one
// line that says so, instead of flooding the log and stalling the renderer.
class gl_debug_log_t {
 public:
  static constexpr int default_budget = 200;

  explicit gl_debug_log_t(int budget = default_budget) : _budget(budget) {}

  // Safe from any thread: in asynchronous mode the driver calls back on one
  // of its own. length below 1 means that text is null-terminated.
  void on_message(GLenum type, GLenum severity, GLuint id, GLsizei length, const char* text);

  int remaining() const { return _budget.load(); }

 private:
  std::atomic<int> _budget;
};

// The budget is per process, not per context.
gl_debug_log_t& gl_debug_log();

// "OpenGL debug [ERROR HIGH id=7]: text", with trailing line ends stripped.
std::string format_gl_debug_message(GLenum type, GLenum severity, GLuint id, std::string_view text);

inline constexpr std::string_view gl_debug_limit_message =
    "OpenGL debug: message limit reached, further driver messages will not be logged by this "
    "process.";

}  // namespace disp
