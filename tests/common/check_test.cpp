#include "common/check.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "common/failure.h"

namespace {

// Death tests re-execute the binary so each child starts from a clean state.
class FailureReport : public ::testing::Test {
 protected:
  void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(FailureReport, AbortPrintsTheFourPartReportAndEndsTheProcess) {
  const int line = 42;
  EXPECT_DEATH(_abort_msg("stock broken", "cbtr::cube_tree_t::step", "src/cbtr/step", &line),
               "^Program abort: stock broken\n"
               "At cbtr::cube_tree_t::step\n"
               "Detail: at line 42 , in file src/cbtr/step\n$");
  const int negative = -7;
  EXPECT_DEATH(_abort_msg("m", "f", "src/x", &negative), "Detail: at line -7 , in file src/x");
}

TEST_F(FailureReport, WarningUsesTheAbortHeadingAndReturns) {
  const int line = 3;
  testing::internal::CaptureStderr();
  _warning_msg("just a warning", "geom::w", "src/geom/w", &line);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Program abort: just a warning\nAt geom::w\nDetail: at line 3 , in file src/geom/w\n");
}

struct widget_t {
  template <class T>
  void fail_inside_template(T) {
    QV_CHECK(sizeof(T) == 0, "widget_t::fail_inside_template: no room");
  }
};

TEST_F(FailureReport, CheckNamesQualifiedFunctionAndSourcePathWithoutExtension) {
  widget_t w;
  EXPECT_DEATH(w.fail_inside_template(1.0),
               "^Program abort: widget_t::fail_inside_template: no room\n"
               "At \\{anonymous\\}::widget_t::fail_inside_template\n"
               "Detail: at line [0-9]+ , in file tests/common/check_test\n$");
}

TEST_F(FailureReport, LastErrorAbortsOnlyWhenSet) {
  const int line = 9;
  errno = 0;
  common::check_last_error("open failed", "f", "src/f", &line);
  errno = ENOENT;
  EXPECT_DEATH(common::check_last_error("open failed", "f", "src/f", &line), "Program abort: open failed err:2\n");
  errno = 0;
}

TEST(QualifiedFunctionName, StripsReturnTypeAndParameters) {
  using common::qualified_function_name;
  EXPECT_EQ(qualified_function_name("geom::stl3d_t::stl3d_t(const string&)"), "geom::stl3d_t::stl3d_t");
  EXPECT_EQ(qualified_function_name("std::vector<int, std::allocator<int> > cbtr::f(int)"), "cbtr::f");
  EXPECT_EQ(qualified_function_name("void disp::pick_t::operator()(int) const"), "disp::pick_t::operator()");
  EXPECT_EQ(qualified_function_name("int main()"), "main");
}

TEST(SourcePath, DropsOnlyTheExtension) {
  EXPECT_EQ(common::source_path("src/geom/stl3d_t.cpp"), "src/geom/stl3d_t");
  EXPECT_EQ(common::source_path("inc/geom/topo/topo_line3wfr_t.h"), "inc/geom/topo/topo_line3wfr_t");
  EXPECT_EQ(common::source_path("src/dotted.dir/file"), "src/dotted.dir/file");
}

}  // namespace
