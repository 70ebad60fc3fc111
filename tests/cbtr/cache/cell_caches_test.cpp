#include "cbtr/cache/cell_caches.h"

#include <gtest/gtest.h>

#include "cbtr/cache/cell_triangles.h"
#include "cbtr/cbtr_cache.h"
#include "cbtr/cube_tree.h"
#include "cbtr/model/tree_walk.h"
#include "hand_trees.h"

namespace {

using namespace cbtr;

// Both caps are process-wide: put back what the host had.
class CacheControls : public ::testing::Test {
 protected:
  void SetUp() override {
    _tris_cap = cbtr__get_tris_cache_bytes();
    _rendering_cap = cbtr__get_rendering_cap();
  }
  void TearDown() override {
    cbtr__set_tris_cache_cap_bytes(_tris_cap);
    cbtr__set_rendering_cap(_rendering_cap);
  }

 private:
  std::uint64_t _tris_cap = 0;
  std::uint64_t _rendering_cap = 0;
};

TEST_F(CacheControls, TrisCapReadsBackAsSetWhileTheCacheIsEmpty) {
  cbtr__clear_cube_tris_cache_buf();
  EXPECT_EQ(cbtr__set_tris_cache_cap_bytes(123456789), 0);
  EXPECT_EQ(cbtr__get_tris_cache_bytes(), 123456789u);
  EXPECT_EQ(tris_cache().size(), 0u);
}

TEST_F(CacheControls, RenderingCapSetsTheNodeLimit) {
  EXPECT_EQ(cbtr__set_rendering_cap(262144000), 0);
  EXPECT_EQ(cbtr__get_rendering_cap(), 262144000u);
  EXPECT_EQ(node_limit(), 561u);
  cbtr__set_rendering_cap(14580u << 5);
  EXPECT_EQ(node_limit(), 1u);
  cbtr__set_rendering_cap((14580u << 5) - 1);
  EXPECT_EQ(node_limit(), 0u);
}

TEST_F(CacheControls, ClearingDrawingsRaisesTheEpoch) {
  const std::uint64_t before = drawing_epoch();
  cbtr__clear_drawing_cache_buf();
  EXPECT_EQ(drawing_epoch(), before + 1);
  EXPECT_EQ(drawing_cache().size(), 0u);
}

TEST_F(CacheControls, ClearingTrianglesDropsEntriesThatOnlyTheCacheHeld) {
  cbtr__set_tris_cache_cap_bytes(std::uint64_t{1} << 60);
  const auto tree = quvra_test::full_tree();
  const std::vector<cube_tri_t> surface = list_surface(*tree);
  ASSERT_FALSE(surface.empty());
  const auto leaf = snapshot_children(*snapshot_children(*tree->root.load())[0])[0];
  ASSERT_FALSE(leaf->tri_cache.load().expired());
  cbtr__clear_cube_tris_cache_buf();
  EXPECT_TRUE(leaf->tri_cache.load().expired());
  EXPECT_EQ(tris_cache().size(), 0u);
}

TEST_F(CacheControls, FreeingOneTreesCachesLeavesOtherTreesAlone) {
  cbtr__set_tris_cache_cap_bytes(std::uint64_t{1} << 60);
  const auto mine = quvra_test::full_tree();
  const auto other = quvra_test::full_tree();
  list_surface(*mine);
  list_surface(*other);
  const std::uint64_t before = drawing_epoch();
  cube_tree__free_disp_cache(mine.get());
  cube_tree__free_disp_cache(nullptr);
  EXPECT_EQ(drawing_epoch(), before + 1);
  int mine_cached = 0, other_cached = 0;
  for_each_leaf(*mine, [&](const cube_node_t& n) { mine_cached += !n.tri_cache.load().expired(); });
  for_each_leaf(*other, [&](const cube_node_t& n) { other_cached += !n.tri_cache.load().expired(); });
  EXPECT_EQ(mine_cached, 0);
  EXPECT_EQ(other_cached, 64);
}

}  // namespace
