#include "cbtr/cache/cell_triangles.h"

#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <thread>

#include "cbtr/cache/cell_caches.h"
#include "cbtr/cbtr_cache.h"
#include "cbtr/cube_tree.h"
#include "cbtr/model/cell_surface.h"
#include "cbtr/model/tree_walk.h"
#include "hand_trees.h"

namespace {

using namespace cbtr;

// The triangle cache is process-wide: each test sets the cap it needs and
// puts the host's cap back.
class CellTriangles : public ::testing::Test {
 protected:
  void SetUp() override { _saved_cap = cbtr__get_tris_cache_bytes(); }
  void TearDown() override { cbtr__set_tris_cache_cap_bytes(_saved_cap); }

 private:
  std::uint64_t _saved_cap = 0;
};

std::vector<std::shared_ptr<cube_node_t>> leaves_of(const cube_tree_t& tree) {
  std::vector<std::shared_ptr<cube_node_t>> out;
  for_each_node(tree, [&out](const cube_node_t& node) {
    for (const auto& child : snapshot_children(node))
      if (child && (child->kind & kind_leaf)) out.push_back(child);
  });
  return out;
}

void expect_same_triangles(const std::vector<cube_tri_t>& got, const std::vector<cube_tri_t>& want) {
  ASSERT_EQ(got.size(), want.size());
  for (std::size_t i = 0; i < got.size(); ++i) {
    EXPECT_EQ(got[i].v, want[i].v) << i;
    EXPECT_EQ(got[i].node, want[i].node) << i;
    EXPECT_EQ(got[i].index, want[i].index) << i;
  }
}

TEST_F(CellTriangles, SecondQueryIsServedFromTheCellsEntry) {
  cbtr__set_tris_cache_cap_bytes(std::uint64_t{1} << 60);
  const auto tree = quvra_test::full_tree();
  const auto leaf = leaves_of(*tree).front();
  const auto first = cell_triangles(*leaf);
  ASSERT_NE(first, nullptr);
  expect_same_triangles(first->payload, leaf_triangles(*leaf));
  EXPECT_EQ(first->cost, tri_cost_bytes * first->payload.size());
  EXPECT_EQ(cell_triangles(*leaf), first);
  EXPECT_EQ(leaf->tri_cache.load().lock(), first);
}

TEST_F(CellTriangles, UniformCellsHaveNone) {
  const auto tree = quvra_test::mixed_tree();
  const auto kids = snapshot_children(*tree->root.load());
  EXPECT_EQ(cell_triangles(*kids[1]), nullptr);  // air
  EXPECT_EQ(cell_triangles(*kids[2]), nullptr);  // solid
  EXPECT_TRUE(kids[1]->tri_cache.load().expired());
}

TEST_F(CellTriangles, WithCapZeroTwoCellsEvictEachOtherAndStayCorrect) {
  cbtr__set_tris_cache_cap_bytes(0);
  const auto tree = quvra_test::full_tree();
  const auto leaves = leaves_of(*tree);
  const auto& a = leaves[0];
  const auto& b = leaves[9];
  for (int round = 0; round < 3; ++round) {
    expect_same_triangles(cell_triangles(*a)->payload, leaf_triangles(*a));
    EXPECT_FALSE(a->tri_cache.load().expired());
    EXPECT_TRUE(b->tri_cache.load().expired());
    expect_same_triangles(cell_triangles(*b)->payload, leaf_triangles(*b));
    EXPECT_TRUE(a->tri_cache.load().expired());
    EXPECT_EQ(tris_cache().size(), 1u);
  }
}

TEST_F(CellTriangles, ChangedCellGivesNewTrianglesOnceItsCacheIsEmptied) {
  cbtr__set_tris_cache_cap_bytes(std::uint64_t{1} << 60);
  const auto tree = quvra_test::full_tree();
  const auto leaf = leaves_of(*tree).front();
  const auto before = cell_triangles(*leaf);
  quvra_test::place_tips(*leaf, 0.25);
  cube_tree__free_disp_cache(tree.get());
  const auto after = cell_triangles(*leaf);
  EXPECT_NE(after, before);
  expect_same_triangles(after->payload, leaf_triangles(*leaf));
}

TEST_F(CellTriangles, SurfaceListsEveryLeafInDepthFirstOrder) {
  cbtr__set_tris_cache_cap_bytes(0);
  const auto tree = quvra_test::mixed_tree();
  std::vector<cube_tri_t> want;
  for_each_node(*tree, [&want](const cube_node_t& node) {
    if (!(node.kind & kind_leaf)) return;
    const auto tris = leaf_triangles(node);
    want.insert(want.end(), tris.begin(), tris.end());
  });
  ASSERT_FALSE(want.empty());
  expect_same_triangles(list_surface(*tree), want);
  EXPECT_TRUE(list_surface(cube_tree_t(3)).empty());
}

TEST_F(CellTriangles, TwoThreadsReadingAtOnceGetTheCellsOwnTriangles) {
  cbtr__set_tris_cache_cap_bytes(tri_cost_bytes * 6);  // a few cells: constant eviction
  const auto tree = quvra_test::full_tree();
  const auto leaves = leaves_of(*tree);
  std::vector<std::vector<cube_tri_t>> want;
  for (const auto& leaf : leaves) want.push_back(leaf_triangles(*leaf));

  std::barrier start(3);
  std::atomic<int> wrong{0};
  auto reader = [&](bool backwards) {
    start.arrive_and_wait();
    for (int round = 0; round < 200; ++round)
      for (std::size_t i = 0; i < leaves.size(); ++i) {
        const std::size_t k = backwards ? leaves.size() - 1 - i : i;
        const auto got = cell_triangles(*leaves[k]);
        if (!got || got->payload.size() != want[k].size() || got->payload[0].v != want[k][0].v) ++wrong;
      }
  };
  std::thread forward(reader, false), backward(reader, true);
  start.arrive_and_wait();
  for (int round = 0; round < 50; ++round) {
    cbtr__clear_cube_tris_cache_buf();
    cube_tree__free_disp_cache(tree.get());
  }
  forward.join();
  backward.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace
