// The vertex arrays a floating mesh is drawn from: which lines are feature
// lines, and that faces carry their smoothed normals.

#include "geom/topo/mesh_vertices.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <set>

#include "soups.h"

namespace {

using segment_t = std::pair<std::array<double, 3>, std::array<double, 3>>;

// Undirected segments, each listed how many times.
std::multiset<segment_t> segments(const std::vector<double>& v) {
  std::multiset<segment_t> out;
  for (std::size_t i = 0; i + 6 <= v.size(); i += 6) {
    std::array<double, 3> a = {v[i], v[i + 1], v[i + 2]}, b = {v[i + 3], v[i + 4], v[i + 5]};
    if (b < a) std::swap(a, b);
    out.insert({a, b});
  }
  return out;
}

geom::topo_stl3d make(const std::vector<geom::stl_tri_t>& soup) {
  return geom::topo_stl3d(reinterpret_cast<const double*>(soup.data()), soup.size());
}

TEST(MeshEdgeSet, ACubeShowsItsTwelveEdgesEachBothWays) {
  geom::topo_stl3d cube = make(quvra_test::box_soup(0, 0, 0, 1, 1, 1));
  const std::multiset<segment_t> s = segments(geom::edge_line_vertices(cube));
  EXPECT_EQ(s.size(), 24u);
  for (const segment_t& e : s) {
    int differing = 0;
    for (int k = 0; k < 3; ++k) differing += e.first[k] != e.second[k];
    EXPECT_EQ(differing, 1) << "a face diagonal is not an edge";
    EXPECT_EQ(s.count(e), 2u);
  }
}

TEST(MeshEdgeSet, BorderLinesAreEdgesAndFoldsBackAreNot) {
  const std::vector<geom::stl_tri_t> one = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {}}};
  geom::topo_stl3d single = make(one);
  EXPECT_EQ(segments(geom::edge_line_vertices(single)).size(), 3u);

  // Two triangles folded onto each other: bend 1, not above the threshold's
  // square only because the test ignores the sign.
  const std::vector<geom::stl_tri_t> folded = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {}},
                                               {{1, 0, 0}, {0, 0, 0}, {0.5, 1, 1e-9}, {}}};
  geom::topo_stl3d fold = make(folded);
  EXPECT_EQ(segments(geom::edge_line_vertices(fold)).size(), 4u) << "the shared line is no edge";
}

TEST(MeshFaces, EachCornerCarriesItsVertexNormal) {
  geom::topo_stl3d cube = make(quvra_test::box_soup(0, 0, 0, 1, 1, 1));
  const std::vector<double> v = geom::lit_tri_vertices(cube);
  ASSERT_EQ(v.size(), 12u * 18);
  for (std::size_t i = 0; i < v.size(); i += 6) {
    EXPECT_NEAR(std::hypot(v[i], v[i + 1], v[i + 2]), 1.0, 1e-12);
    // A cube's faces meet at right angles, so the normal is the face's own:
    // along one axis, pointing away from the centre.
    for (int k = 0; k < 3; ++k)
      if (std::abs(v[i + k]) > 0.5) {
        EXPECT_EQ(v[i + k] > 0, v[i + 3 + k] > 0.5);
      }
  }
}

}  // namespace
