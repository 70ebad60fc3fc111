// Stocks built from closed soups: the surface they list is closed, encloses
// the volume of the input within the cell bounds, and lies on the input.

#include "cbtr/build_cube_tree.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "cbtr/cell_surface.h"
#include "common/stop.h"
#include "soups.h"
#include "surface_checks.h"

namespace {

using namespace cbtr;
using quvra_test::triangle3;

void collect(const cube_node_t& node, std::vector<triangle3>& out) {
  if (node.kind & kind_leaf) {
    for (const cube_tri_t& t : leaf_triangles(node)) out.push_back({t.v[0], t.v[1], t.v[2]});
    return;
  }
  for (const auto& child : snapshot_children(node))
    if (child) collect(*child, out);
}

std::vector<triangle3> surface(const cube_tree_t& tree) {
  std::vector<triangle3> out;
  if (const auto root = tree.root.load()) collect(*root, out);
  return out;
}

std::unique_ptr<cube_tree_t> build(const std::vector<geom::stl_tri_t>& soup, double w,
                                   build_counts_t* counts = nullptr) {
  geom::stl3d_t s;
  s.tris = soup;
  return build_cube_tree(s, w, nullptr, nullptr, counts);
}

void expect_closed(const std::vector<triangle3>& tris, const char* what) {
  const auto c = quvra_test::check_closure(tris);
  EXPECT_GT(c.edges, 0u) << what;
  EXPECT_EQ(c.open_lines, 0u) << what;
  EXPECT_NEAR(c.volume_about_origin, c.volume_about_far_point,
              1e-9 * std::max(1.0, std::abs(c.volume_about_origin)) * 1e3)
      << what;
}

TEST(BuildCubeTree, SphereIsClosedAndWithinOnePercentOfItsVolume) {
  const double r = 10;
  const auto soup = quvra_test::sphere_soup(r, 48, 96);
  // The polyhedron's own volume, not the ideal sphere's.
  std::vector<triangle3> input;
  for (const auto& t : soup) input.push_back({t.a, t.b, t.c});
  const double exact = quvra_test::enclosed_volume(input, {0, 0, 0});
  for (double w : {2 * r / 16, 2 * r / 32, 2 * r / 64}) {
    build_counts_t counts;
    const auto tree = build(soup, w, &counts);
    const auto tris = surface(*tree);
    expect_closed(tris, "sphere");
    EXPECT_EQ(counts.defects, 0u);
    const double v = quvra_test::enclosed_volume(tris, {0, 0, 0});
    // The finest of the three cells, 1/64 of the diameter, must come within 1%.
    EXPECT_LT(std::abs(v - exact) / exact, w == 2 * r / 64 ? 0.01 : 0.06) << "cell " << w;
    // Vertices are crossings of grid lines with the input.
    for (const auto& t : tris)
      for (const auto& p : t) {
        const double d = std::sqrt(p[0] * p[0] + p[1] * p[1] + p[2] * p[2]);
        EXPECT_LT(std::abs(d - r), 0.05) << "cell " << w;
      }
  }
}

}  // namespace
