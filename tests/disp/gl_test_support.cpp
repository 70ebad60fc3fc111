#include "gl_test_support.h"

#include <mutex>

#include "common/log_sink.h"
#include "disp/egl_display_t.h"
#include "disp/init_disp.h"

namespace disp_test {

namespace {

std::mutex log_mutex;
std::vector<std::string> captured;
std::vector<std::string> during_init;
double depth_max = 0.0;

void capture(const char* msg) {
  std::lock_guard lock(log_mutex);
  captured.emplace_back(msg);
}

class gl_environment_t : public ::testing::Environment {
 public:
  void SetUp() override {
    common::set_log_callback(capture);
    if (gl_skip_reason().empty()) disp::init_disp(&depth_max);
    during_init = log_lines();
  }
};

[[maybe_unused]] const auto* const environment = ::testing::AddGlobalTestEnvironment(new gl_environment_t);

}  // namespace

const std::string& gl_skip_reason() {
  static const std::string reason = disp::egl_unavailable_reason();
  return reason;
}

double init_depth_max() { return depth_max; }

const std::vector<std::string>& init_log_lines() { return during_init; }

std::vector<std::string> log_lines() {
  std::lock_guard lock(log_mutex);
  return captured;
}

void clear_log() {
  std::lock_guard lock(log_mutex);
  captured.clear();
}

}  // namespace disp_test
