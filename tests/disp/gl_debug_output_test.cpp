// Driver messages in the log: the QV_GL_DEBUG modes on a real context, the
// wording of a line, and the budget that stops a flooding driver.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "disp/context.h"
#include "disp/gl_debug_output.h"
#include "gl_test_support.h"

namespace {

using disp_test::on_new_thread;

struct debug_state_t {
  bool output = false;
  bool synchronous = false;
  bool callback = false;
};

// The debug state of a fresh context, whose first lock installs debug output
// under the given QV_GL_DEBUG value (null: unset).
debug_state_t fresh_context_debug_state(const char* mode) {
  if (mode)
    setenv("QV_GL_DEBUG", mode, 1);
  else
    unsetenv("QV_GL_DEBUG");
  debug_state_t state;
  on_new_thread([&] {
    disp_torch* torch = disp_torch__lock();
    state.output = glIsEnabled(GL_DEBUG_OUTPUT);
    state.synchronous = glIsEnabled(GL_DEBUG_OUTPUT_SYNCHRONOUS);
    void* fn = nullptr;
    glGetPointerv(GL_DEBUG_CALLBACK_FUNCTION, &fn);
    state.callback = fn != nullptr;
    disp_torch__unlock(torch);
  });
  unsetenv("QV_GL_DEBUG");
  return state;
}

int count_starting_with(const std::vector<std::string>& lines, const std::string& prefix) {
  int n = 0;
  for (const auto& line : lines) n += line.rfind(prefix, 0) == 0;
  return n;
}

TEST(GlDebugOutput, ModesFollowQvGlDebug) {
  QV_REQUIRE_GL();
  for (const char* off : {"off", "0"}) {
    const debug_state_t s = fresh_context_debug_state(off);
    EXPECT_FALSE(s.output) << off;
    EXPECT_FALSE(s.callback) << off;
  }
  const debug_state_t async = fresh_context_debug_state("async");
  EXPECT_TRUE(async.output);
  EXPECT_FALSE(async.synchronous);
  EXPECT_TRUE(async.callback);
  for (const char* sync : {static_cast<const char*>(nullptr), "1", "sync"}) {
    const debug_state_t s = fresh_context_debug_state(sync);
    EXPECT_TRUE(s.output);
    EXPECT_TRUE(s.synchronous);
    EXPECT_TRUE(s.callback);
  }
}

TEST(GlDebugOutput, DriverMessagesAreLoggedUntilTheBudgetEndsWithOneLimitLine) {
  QV_REQUIRE_GL();
  disp_context* ctx = get_disp_context();
  lock_context(ctx);  // the main thread's context: debug output synchronous by default
  const int budget = disp::gl_debug_log().remaining();
  EXPECT_EQ(budget, disp::gl_debug_log_t::default_budget)
      << "no driver message is expected before this test in a fresh process";
  disp_test::clear_log();
  for (int i = 0; i < budget + 3; ++i) {
    const std::string text = "message " + std::to_string(i) + "\n";
    glDebugMessageInsert(GL_DEBUG_SOURCE_APPLICATION, GL_DEBUG_TYPE_ERROR, static_cast<GLuint>(i),
                         GL_DEBUG_SEVERITY_HIGH, -1, text.c_str());
  }
  unlock_context(ctx);

  const std::vector<std::string> lines = disp_test::log_lines();
  ASSERT_EQ(count_starting_with(lines, "OpenGL debug ["), budget);
  ASSERT_EQ(count_starting_with(lines, std::string(disp::gl_debug_limit_message)), 1);
  ASSERT_GE(lines.size(), 2u);
  EXPECT_EQ(lines.back(), disp::gl_debug_limit_message);
  const std::string last = std::to_string(budget - 1);
  EXPECT_EQ(lines[lines.size() - 2], "OpenGL debug [ERROR HIGH id=" + last + "]: message " + last);
}

TEST(GlDebugOutput, TheBudgetIsTwoHundredThenOneLimitLineThenSilence) {
  disp::gl_debug_log_t log;
  disp_test::clear_log();
  for (int i = 1; i <= 205; ++i) log.on_message(GL_DEBUG_TYPE_OTHER, GL_DEBUG_SEVERITY_LOW, i, 1, "x");
  const std::vector<std::string> lines = disp_test::log_lines();
  ASSERT_EQ(lines.size(), 201u);
  EXPECT_EQ(lines[199], "OpenGL debug [OTHER LOW id=200]: x");
  EXPECT_EQ(lines[200], disp::gl_debug_limit_message);
}

TEST(GlDebugOutput, LinesNameTypeAndSeverityAndDropTrailingLineEnds) {
  using disp::format_gl_debug_message;
  EXPECT_EQ(format_gl_debug_message(GL_DEBUG_TYPE_PERFORMANCE, GL_DEBUG_SEVERITY_MEDIUM, 42, "slow path\r\n\n"),
            "OpenGL debug [PERFORMANCE MEDIUM id=42]: slow path");
  EXPECT_EQ(format_gl_debug_message(GL_DEBUG_TYPE_UNDEFINED_BEHAVIOR, GL_DEBUG_SEVERITY_NOTIFICATION, 0, "a\nb"),
            "OpenGL debug [UNDEFINED NOTIFICATION id=0]: a\nb");
  EXPECT_EQ(format_gl_debug_message(0x1234, 0x5678, 1, ""), "OpenGL debug [OTHER NOTIFICATION id=1]: ");
  const std::pair<GLenum, const char*> types[] = {{GL_DEBUG_TYPE_ERROR, "ERROR"},
                                                  {GL_DEBUG_TYPE_DEPRECATED_BEHAVIOR, "DEPRECATED"},
                                                  {GL_DEBUG_TYPE_PORTABILITY, "PORTABILITY"},
                                                  {GL_DEBUG_TYPE_MARKER, "MARKER"},
                                                  {GL_DEBUG_TYPE_PUSH_GROUP, "PUSH_GROUP"},
                                                  {GL_DEBUG_TYPE_POP_GROUP, "POP_GROUP"}};
  for (const auto& [type, word] : types)
    EXPECT_EQ(format_gl_debug_message(type, GL_DEBUG_SEVERITY_HIGH, 3, "m"),
              std::string("OpenGL debug [") + word + " HIGH id=3]: m");
}

TEST(GlDebugOutput, AMessageWithALengthIsCutThere) {
  disp::gl_debug_log_t log;
  disp_test::clear_log();
  log.on_message(GL_DEBUG_TYPE_ERROR, GL_DEBUG_SEVERITY_HIGH, 5, 4, "textTAIL");
  EXPECT_EQ(disp_test::log_lines(), std::vector<std::string>{"OpenGL debug [ERROR HIGH id=5]: text"});
}

}  // namespace
