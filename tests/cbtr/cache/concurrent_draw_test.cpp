// The display draws a stock while a host thread cuts it: frames keep coming
// through the drawing cache, and the cut stock ends closed.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "cbtr/cache/draw_tree.h"
#include "cbtr/cbtr_cache.h"
#include "disp/disp_torch.h"
#include "gl_test_support.h"
#include "pick_target.h"
#include "step_stock.h"
#include "view_bind.h"

namespace {

TEST(ConcurrentDraw, DrawingWhileCuttingIsSafe) {
  QV_REQUIRE_GL();
  quvra_test::stock_t stock({0.3, 0.2, 0.1, 10.7, 8.9, 6.35}, 0.5);
  cbtr__set_rendering_cap(262144000);
  std::atomic<bool> cutting{true};
  std::atomic<std::size_t> frames{0};
  std::thread display([&] {
    const disp::disp_torch torch;
    test_support::pick_target_t target(32, 32);
    while (cutting) {
      const auto b = test_support::view_bind({5.5, 4.5, 3.2}, 6, 32);
      cbtr::draw_tree(*stock.tree, *b);
      ++frames;
    }
  });
  for (double x = 1.0; x + 2.0 <= 9.0; x += 0.4) {
    quvra_test::soup_t tool(quvra_test::box_soup(x, 3.3, 4.1, x + 2.0, 5.3, 8.0));
    substraction__dtor(cube_tree__substract_by_stl3d(stock.tree, tool.s, 0.5, true, false));
  }
  cutting = false;
  display.join();
  EXPECT_GT(frames.load(), 0u);
  EXPECT_EQ(stock.closure().open_lines, 0u);
}

}  // namespace
