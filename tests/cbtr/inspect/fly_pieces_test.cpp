// Chips cut free of the main body, and cells with infinite tips, as a host
// finds and clears them.

#include "cbtr/inspect/fly_pieces.h"

#include <gtest/gtest.h>

#include <cmath>

#include "cbtr/cache/cell_triangles.h"
#include "cbtr/cube_tree.h"
#include "cbtr/model/tree_walk.h"
#include "cbtr/substraction.h"
#include "geom/stl3d.h"
#include "soups.h"
#include "surface_checks.h"

namespace {

cube_tree_t* build(const std::vector<geom::stl_tri_t>& soup, double w) {
  stl3d_t* s = stl3d__new_by_copy_array(reinterpret_cast<const double*>(soup.data()), soup.size());
  cube_tree_t* tree = cube_tree__new(s, w, nullptr, nullptr);
  stl3d__delete(s);
  return tree;
}

quvra_test::closure_t closure(const cube_tree_t* tree) {
  std::vector<quvra_test::triangle3> tris;
  for (const cbtr::cube_tri_t& t : cbtr::list_surface(*tree)) tris.push_back({t.v[0], t.v[1], t.v[2]});
  return quvra_test::check_closure(tris);
}

void cut(cube_tree_t* tree, const std::vector<geom::stl_tri_t>& tool, double w) {
  stl3d_t* s = stl3d__new_by_copy_array(reinterpret_cast<const double*>(tool.data()), tool.size());
  substraction__dtor(cube_tree__substract_by_stl3d(tree, s, w, false, false));
  stl3d__delete(s);
}

// One body stays as it is; so do two bodies meeting in one lattice corner.
TEST(FlyPieces, OneBodyStaysAsItIs) {
  auto cubes = quvra_test::box_soup(0, 0, 0, 1, 1, 1);
  const auto other = quvra_test::box_soup(1, 1, 1, 2, 2, 2);
  cubes.insert(cubes.end(), other.begin(), other.end());
  for (const auto& [soup, w] : {std::pair{quvra_test::sphere_soup(5, 24, 48), 0.5}, std::pair{cubes, 0.25}}) {
    cube_tree_t* tree = build(soup, w);
    const double before = closure(tree).volume_about_origin;
    EXPECT_EQ(cbtr::remove_fly_pieces(*tree), 0u);
    EXPECT_EQ(closure(tree).volume_about_origin, before);
    cube_tree__delete(tree);
  }
}

TEST(FlyPieces, ACutThatSplitsTheStockLeavesTheChipUntilItIsRemoved) {
  const double w = 0.5;
  cube_tree_t* tree = build(quvra_test::box_soup(0.3, 0.2, 0.1, 10.7, 8.9, 6.35), w);
  // A slab through the whole block at x 7.1 .. 8.3 cuts off the end.
  cut(tree, quvra_test::box_soup(7.1, -1, -1, 8.3, 10, 8), w);
  const auto split = closure(tree);
  EXPECT_NEAR(split.volume_about_origin, (6.8 + 2.4) * 8.7 * 6.25, 0.5 * w * w * 4 * (9.2 + 8.7 + 6.25));
  cube_tree__remove_fly_piece(tree);
  const auto body = closure(tree);
  EXPECT_EQ(body.open_lines, 0u);
  EXPECT_NEAR(body.volume_about_origin, 6.8 * 8.7 * 6.25, 0.5 * w * w * 4 * (6.8 + 8.7 + 6.25));
  double box[6] = {INFINITY, INFINITY, INFINITY, -INFINITY, -INFINITY, -INFINITY};
  cube_tree__ExpandToBox3d(tree, box);
  EXPECT_LE(box[3], 7.1 + w);
  cube_tree__delete(tree);
}

std::vector<std::vector<std::uint32_t>> reported_edges;
void record(const double*, const uint32_t* edges, size_t count) { reported_edges.emplace_back(edges, edges + count); }

TEST(InfEdgeCuts, CellsWithInfiniteTipsAreFoundAndListed) {
  cube_tree_t* tree = build(quvra_test::box_soup(0.3, 0.2, 0.1, 4.7, 3.9, 2.35), 0.5);
  EXPECT_FALSE(cube_tree__contains_inf_edge_cuts(tree));
  cbtr::cube_node_t* victim = nullptr;
  cbtr::for_each_leaf(*tree, [&](const cbtr::cube_node_t& leaf) {
    if (!victim) victim = const_cast<cbtr::cube_node_t*>(&leaf);
  });
  ASSERT_NE(victim, nullptr);
  victim->tips[7] = -INFINITY;
  victim->tips[2] = INFINITY;
  EXPECT_TRUE(cube_tree__contains_inf_edge_cuts(tree));
  reported_edges.clear();
  cube_tree__get_inf_edge_cuts_info(tree, record);
  ASSERT_EQ(reported_edges.size(), 1u);
  EXPECT_EQ(reported_edges[0], (std::vector<std::uint32_t>{2, 7}));
  cube_tree__get_inf_edge_cuts_info(tree, nullptr);
  EXPECT_FALSE(cube_tree__contains_inf_edge_cuts(nullptr));
  cube_tree__delete(tree);
}

}  // namespace
