#pragma once

// Shared by the interpreter tests: running program text and comparing
// points.

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <string_view>
#include <utility>

#include "interp/apt_reader.h"
#include "interp/move_t.h"
#include "interp/ngc_interpreter.h"
#include "interp/source_error_t.h"
#include "thrown_message.h"

namespace mill::test {

inline void expect_point(const vec3_t& actual, const vec3_t& expected, double tol = 1e-9) {
  for (int i = 0; i < 3; ++i) EXPECT_NEAR(actual[i], expected[i], tol) << "coordinate " << i;
}

inline double distance(const vec3_t& a, const vec3_t& b) { return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]); }

// The message of the source_error_t that run throws; fails the test when
// it throws none.
template <typename F>
std::string error_of(F&& run) {
  return message_of<source_error_t>(std::forward<F>(run));
}

// Programs given as text run under the names prog.ngc and part.cls.
inline program_t ngc(std::string_view text, const interp_options_t& options = {}) {
  return run_ngc(text, "prog.ngc", options);
}
inline program_t apt(std::string_view text, const interp_options_t& options = {}) {
  return run_apt(text, "part.cls", options);
}
inline std::string ngc_error(std::string_view text, const interp_options_t& options = {}) {
  return error_of([&] { ngc(text, options); });
}
inline std::string apt_error(std::string_view text) {
  return error_of([&] { apt(text); });
}

}  // namespace mill::test
