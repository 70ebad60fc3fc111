#pragma once

// Shared ground of the display tests: one init_disp per test process (on the
// main thread, which keeps its context), a capture of every log line, and the
// reason GL tests skip on a machine without EGL.

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "disp/bind.h"
#include "disp/disp_torch.h"
#include "geom/mat4d.h"
#include "pick_target.h"

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

// A test that holds a context and draws into a square target of pixels a
// side; without GL, target stays null and the test skips.
class gl_target_test : public ::testing::Test {
 protected:
  explicit gl_target_test(int pixels) : _pixels(pixels) {}
  void SetUp() override {
    if (!gl_skip_reason().empty()) return;
    _torch = std::make_unique<disp::disp_torch>();
    target = std::make_unique<test_support::pick_target_t>(_pixels, _pixels);
  }
  void TearDown() override {
    target.reset();
    _torch.reset();
  }

  std::unique_ptr<test_support::pick_target_t> target;

 private:
  const int _pixels;
  std::unique_ptr<disp::disp_torch> _torch;
};

// A target test that also holds a bind whose matrices are all the identity,
// so clip coordinates land as given, drawn under the picking id asked for.
class gl_bind_test : public gl_target_test {
 protected:
  gl_bind_test(int pixels, std::int32_t picking_id)
      : gl_target_test(pixels), _pixels(pixels), _picking_id(picking_id) {}
  void SetUp() override {
    gl_target_test::SetUp();
    if (!target) return;
    const geom::mat4d id = geom::mat4d::identity();
    b = std::make_unique<disp::bind>(id, id, id, id, 0, _pixels, _pixels);
    b->picking_id = _picking_id;
  }
  void TearDown() override {
    b.reset();
    gl_target_test::TearDown();
  }

  std::unique_ptr<disp::bind> b;

 private:
  const int _pixels;
  const std::int32_t _picking_id;
};

}  // namespace disp_test

#define QV_REQUIRE_GL()                                                                                             \
  do {                                                                                                              \
    if (!::disp_test::gl_skip_reason().empty()) GTEST_SKIP() << "no GL context: " << ::disp_test::gl_skip_reason(); \
  } while (0)
