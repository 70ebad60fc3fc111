#include "host/progress_view.h"

#include <gtest/gtest.h>

#include <sstream>

namespace mill {
namespace {

TEST(ProgressView, PlainOutputIsALineAtEachTenth) {
  std::ostringstream out;
  progress_view_t view(out, false, 20);
  for (std::size_t done = 1; done <= 20; ++done) view.update(done);
  view.finish();
  const std::string text = out.str();
  EXPECT_EQ(text.find('\r'), std::string::npos);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 10);
  EXPECT_EQ(text.substr(0, text.find('\n') + 1), "cut 2 of 20 moves (10%)\n");
}

TEST(ProgressView, ATerminalGetsOneBarRedrawnInPlace) {
  std::ostringstream out;
  progress_view_t view(out, true, 4);
  for (std::size_t done = 1; done <= 4; ++done) view.update(done);
  view.finish();
  const std::string text = out.str();
  // Redraws within a tenth of a second are skipped, but the first and the
  // last are always shown.
  EXPECT_EQ(text.rfind("\r[", 0), 0u);
  EXPECT_NE(text.find("] 100% 4/4 moves"), std::string::npos);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1);
  EXPECT_EQ(text.back(), '\n');
}

}  // namespace
}  // namespace mill
