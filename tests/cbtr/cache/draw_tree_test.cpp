// A stock on screen through the drawing cache: what it draws, at which
// depth, and that the cache holds no more than its cap while a camera
// sweeps over a large stock.

#include "cbtr/cache/draw_tree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "cbtr/cache/cell_caches.h"
#include "cbtr/cbtr_cache.h"
#include "cbtr/cube_tree.h"
#include "cbtr/model/tree_walk.h"
#include "disp/disp_torch.h"
#include "gl_test_support.h"
#include "pick_target.h"
#include "step_stock.h"
#include "view_bind.h"

namespace {

constexpr int pixels = 32;
constexpr std::uint64_t default_cap = 262144000;

class DrawTreeTest : public disp_test::gl_target_test {
 protected:
  DrawTreeTest() : gl_target_test(pixels) {}
  void TearDown() override {
    cbtr__set_rendering_cap(default_cap);
    gl_target_test::TearDown();
  }
};

TEST_F(DrawTreeTest, TheStockCoversItsPixelsAtTheDepthTheViewAffords) {
  QV_REQUIRE_GL();
  quvra_test::stock_t stock({0.1, 0.1, 0.1, 8.1, 8.1, 8.1}, 0.25);
  const auto b = test_support::view_bind({4.1, 4.1, 4.1}, 8, pixels);
  const double identity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

  cbtr__set_rendering_cap(0);  // no cells allowed per depth: the root alone
  EXPECT_EQ(cbtr::draw_tree(*stock.tree, *b), 0);

  cbtr__set_rendering_cap(default_cap);
  int depth = 0;
  for (int frame = 0; frame < 9; ++frame) depth = cbtr::draw_tree(*stock.tree, *b);
  EXPECT_EQ(depth, 0) << "the frame drawn at depth 0 holds detail back for ten frames";
  target->clear();
  cube_tree__RenderByMat(stock.tree, b.get(), identity);
  depth = cbtr::draw_tree(*stock.tree, *b);
  EXPECT_GT(depth, 10);
  // Cells carry id 0; the stock covers the middle of the view, and not its
  // corner.
  EXPECT_EQ(target->id(pixels * 5 / 8, pixels * 5 / 8), 0u);
  EXPECT_EQ(target->id(1, 1), 0xFFFFFFFFu);
  EXPECT_GT(target->colour(pixels * 5 / 8, pixels * 5 / 8)[2], 0);

  cube_tree__RenderByMat(nullptr, b.get(), identity);
  cube_tree__RenderByMat(stock.tree, nullptr, identity);
}

TEST_F(DrawTreeTest, ALargeStockStaysWithinTheCacheCapWhileTheViewSweeps) {
  QV_REQUIRE_GL();
  // Flat faces take few cells; a sphere's surface is fine all over.
  constexpr double radius = 12, width = 0.05;
  quvra_test::soup_t ball(quvra_test::sphere_soup(radius, 120, 120));
  std::unique_ptr<cube_tree_t, void (*)(cube_tree_t*)> tree(cube_tree__new(ball.s, width, nullptr, nullptr),
                                                            cube_tree__delete);
  std::size_t cells = 0;
  cbtr::for_each_node(*tree, [&cells](const cbtr::cube_node_t&) { ++cells; });
  EXPECT_GT(cells, 800000u);

  // Many cells per depth allowed, few bytes: the sweep must evict.
  cbtr__set_rendering_cap(default_cap);
  constexpr std::uint64_t cap = 256 * 1024;
  cbtr::drawing_cache().set_cap(cap);
  // No entry is larger than a cell's surface: at most 12 triangles.
  constexpr std::uint64_t largest_entry = 12 * 3 * cbtr::vertex_cost_bytes;
  std::uint64_t peak = 0;
  for (double x = -radius; x <= radius; x += radius / 32) {
    const auto b = test_support::view_bind({x, 0, 0}, radius / 8, pixels);
    cbtr::draw_tree(*tree, *b);
    const std::uint64_t used = cbtr::drawing_cache().used_bytes();
    EXPECT_LE(used, cap + largest_entry) << "at x = " << x;
    peak = std::max(peak, used);
  }
  EXPECT_GT(peak, cap / 2) << "the sweep drew enough to press the cap";
}

}  // namespace
