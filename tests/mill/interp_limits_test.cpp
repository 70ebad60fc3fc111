// Hostile and out-of-range programs: each is refused with its file and line,
// promptly and within the stack, instead of crashing, hanging or running
// out of memory.

#include <gtest/gtest.h>

#include <string>

#include "case_files.h"
#include "interp/expr_parser.h"
#include "interp/program_reader.h"
#include "interp/source_error_t.h"
#include "mill_test_support.h"

namespace mill::test {
namespace {

struct refusal_t {
  int line = -1;
  std::string message;
};

refusal_t refusal_of(const std::string& name, const interp_options_t& options = {}) {
  try {
    read_program(case_path(name), options);
  } catch (const source_error_t& e) {
    EXPECT_EQ(e.file(), case_path(name));
    return {e.line(), e.what()};
  }
  ADD_FAILURE() << name << " ran without an error";
  return {};
}

void expect_refused(const std::string& name, int line, const std::string& reason, const interp_options_t& options = {}) {
  const refusal_t r = refusal_of(name, options);
  EXPECT_EQ(r.line, line) << name;
  EXPECT_NE(r.message.find(reason), std::string::npos) << name << ": " << r.message;
}

TEST(InterpLimits, DeepValuesAreRefusedWithTheirLine) {
  expect_refused("nested_brackets.ngc", 2, "value nested too deeply");
  expect_refused("unary_chain.ngc", 2, "value nested too deeply");
  expect_refused("operator_chain.ngc", 2, "value nested too deeply");
}

TEST(InterpLimits, ValuesJustWithinTheDepthAreRead) {
  const int terms = max_value_depth - 1;
  std::string sum = "1";
  for (int i = 1; i < terms; ++i) sum += "+1";
  std::string brackets = "1";
  for (int i = 1; i < max_value_depth; ++i) brackets = "[" + brackets + "]";
  const program_t p = ngc("G1 F100 X[" + sum + "] Y" + brackets + "\n");
  ASSERT_EQ(p.moves.size(), 1u);
  expect_point(p.moves[0].end, {terms, 1, 0});
}

TEST(InterpLimits, WordOperatorsMayBeFollowedByAFunction) {
  const program_t p = read_program(case_path("operator_before_function.ngc"), {});
  ASSERT_EQ(p.moves.size(), 1u);
  expect_point(p.moves[0].end, {1, 2, 0});
}

TEST(InterpLimits, MovesStopAtTheLimitOfARun) {
  interp_options_t options;
  options.max_moves = 1000;
  const refusal_t r = refusal_of("endless_moves.ngc", options);
  EXPECT_TRUE(r.line == 3 || r.line == 4) << r.message;
  EXPECT_NE(r.message.find("more than 1000 moves"), std::string::npos) << r.message;
}

TEST(InterpLimits, ArcsBeyondTheLimitsAreRefusedNotLost) {
  // The many-turn arc once wrapped its chord count round an int and came out
  // as nothing.
  expect_refused("many_turn_arc.ngc", 2, "chords, more than the 9999999 allowed");
  expect_refused("far_arc_centre.ngc", 2, "position beyond the machine's limit of +-1000000 mm");
}

TEST(InterpLimits, PositionsBeyondTheMachineAreRefused) {
  expect_refused("far_move.ngc", 3, "position beyond the machine's limit of +-1000000 mm 'G1'");
  expect_refused("far_goto.cls", 3, "position beyond the machine's limit");
  expect_refused("far_from.cls", 1, "position beyond the machine's limit");
}

TEST(InterpLimits, NumbersOutOfRangeSayWhy) {
  expect_refused("huge_g_number.ngc", 2, "unsupported word 'G99999999999999999999'");
  expect_refused("huge_repeat.ngc", 1, "repeat count above the limit of 1000000000");
  expect_refused("nan_goto.cls", 3, "expected a number 'NAN'");
  expect_refused("inf_fedrat.cls", 1, "unsupported feed mode 'INF'");
}

TEST(InterpLimits, ADirectoryIsNoProgram) {
  // It once read as an empty program, which the host took for one without
  // feed moves.
  const std::string dir = case_path("");
  try {
    read_program(dir, {});
    ADD_FAILURE() << "a directory ran as a program";
  } catch (const source_error_t& e) {
    EXPECT_EQ(e.line(), 0);
    EXPECT_NE(std::string(e.what()).find("is a directory, not a file"), std::string::npos) << e.what();
  }
}

}  // namespace
}  // namespace mill::test
