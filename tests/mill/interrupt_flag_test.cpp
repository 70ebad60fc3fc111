#include "host/interrupt_flag.h"

#include <gtest/gtest.h>

#include <csignal>

namespace mill {
namespace {

volatile std::sig_atomic_t outer_calls = 0;
extern "C" void outer_handler(int) { outer_calls = outer_calls + 1; }

TEST(InterruptFlag, CtrlCSetsTheFlagAndTheOldHandlerComesBack) {
  std::signal(SIGINT, outer_handler);
  {
    const interrupt_guard_t guard;
    EXPECT_FALSE(interrupt_requested());
    std::raise(SIGINT);
    EXPECT_TRUE(interrupt_requested());
    EXPECT_EQ(outer_calls, 0);
  }
  std::raise(SIGINT);
  EXPECT_EQ(outer_calls, 1);
  const interrupt_guard_t next;
  EXPECT_FALSE(interrupt_requested()) << "a new run starts with the flag down";
  std::signal(SIGINT, SIG_DFL);
}

}  // namespace
}  // namespace mill
