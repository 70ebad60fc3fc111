// The compare's tasks hand every cell to the host once, while the display
// reads the stock.

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <set>
#include <thread>

#include "cbtr/cache/cell_triangles.h"
#include "cbtr/geom_compare.h"
#include "soups.h"
#include "step_stock.h"

namespace {

struct seen_t {
  std::mutex lock;
  std::multiset<const cube_node_t*> cells;
  static void take(std::shared_ptr<cube_node_t>& node, double, void* ctx) {
    auto* s = static_cast<seen_t*>(ctx);
    std::lock_guard<std::mutex> g(s->lock);
    s->cells.insert(node.get());
  }
};

TEST(ConcurrentCompare, EveryCellIsMeasuredOnceWhileTheDisplayReads) {
  quvra_test::stock_t stock({0, 0, 0, 12, 12, 6}, 0.25);
  stock.cut({3, 3, 4, 9, 9, 7}, 0.25);
  quvra_test::soup_t design(quvra_test::box_soup(0, 0, 0, 12, 12, 5));
  seen_t seen;
  std::atomic<bool> comparing{true};
  std::thread reader([&] {
    while (comparing) EXPECT_FALSE(cbtr::list_surface(*stock.tree).empty());
  });
  EXPECT_EQ(geom_compare(stock.tree, design.s, 3.0, 0.01, seen_t::take, &seen, nullptr), GEOM_COMPARE_OK);
  comparing = false;
  reader.join();
  EXPECT_EQ(seen.cells.size(), stock.leaves());
  for (const cube_node_t* c : seen.cells) EXPECT_EQ(seen.cells.count(c), 1u);
}

}  // namespace
