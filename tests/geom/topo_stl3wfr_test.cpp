// The exact mesh: topology from soups, quantisation, removal of triangles
// and the link checks that guard the carve.

#include "geom/topo/topo_stl3wfr_t.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "geom/topo_stl3wfr.h"
#include "soups.h"

namespace {

using geom::fr;
using geom::stl_tri_t;
using geom::topo_stl3wfr_t;
using mesh_t = topo_stl3wfr_t;

mesh_t make(const std::vector<stl_tri_t>& soup, double resolution = 1e-4) {
  return mesh_t(reinterpret_cast<const double*>(soup.data()), soup.size(), resolution);
}

std::size_t twin_pairs(mesh_t& m) {
  std::size_t n = 0;
  m.line_stock().for_each([&](const auto* l) { n += l->twin != nullptr; });
  return n / 2;
}

const std::vector<stl_tri_t> tetrahedron = {{{0, 0, 0}, {0, 1, 0}, {1, 0, 0}, {}},
                                            {{0, 0, 0}, {1, 0, 0}, {0, 0, 1}, {}},
                                            {{0, 0, 0}, {0, 0, 1}, {0, 1, 0}, {}},
                                            {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {}}};

TEST(ExactMeshTopology, ClosedSolidsAreSeamlessWithEulerCounts) {
  struct solid {
    std::vector<stl_tri_t> soup;
    std::size_t points;
  };
  for (const solid& s :
       {solid{quvra_test::box_soup(0, 0, 0, 1, 2, 3), 8}, solid{tetrahedron, 4},
        solid{quvra_test::sphere_soup(5, 6, 10), 2 + 5 * 10}, solid{quvra_test::torus_soup(5, 1, 24, 12), 24 * 12}}) {
    mesh_t m = make(s.soup);
    EXPECT_EQ(m.points_size(), s.points);
    EXPECT_EQ(m.tris_size(), s.soup.size());
    EXPECT_EQ(m.lines_size(), 3 * s.soup.size());
    EXPECT_EQ(twin_pairs(m), 3 * s.soup.size() / 2);
    EXPECT_TRUE(m.is_seamless());
  }
}

TEST(ExactMeshTopology, LinesStartAtTheirCornerAndPointToTheirOwner) {
  mesh_t m = make(quvra_test::box_soup(0, 0, 0, 1, 1, 1));
  for (auto* t = m.tri_stock().first(); t; t = t->next)
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(t->l[i]->p0, t->p[i]);
      EXPECT_EQ(t->l[i]->p1, t->p[(i + 1) % 3]);
      EXPECT_EQ(t->l[i]->tri, t);
      EXPECT_EQ(t->l[i]->twin->twin, t->l[i]);
    }
}

TEST(ExactMeshTopology, EmptySoupIsAnEmptySeamlessMesh) {
  mesh_t m = make({});
  EXPECT_EQ(m.tris_size(), 0u);
  EXPECT_TRUE(m.is_seamless());
}

TEST(ExactMeshTopology, RemovingOneTriangleBreaksTheSeam) {
  mesh_t m = make(quvra_test::box_soup(0, 0, 0, 1, 1, 1));
  m.del_tri(m.tri_stock().first());
  EXPECT_EQ(m.tris_size(), 11u);
  EXPECT_EQ(m.lines_size(), 33u);
  EXPECT_EQ(m.points_size(), 8u);
  EXPECT_EQ(twin_pairs(m), 15u);
  EXPECT_FALSE(m.is_seamless());
}

TEST(ExactMeshTopology, RemovingEveryTriangleLeavesNothing) {
  mesh_t m = make(tetrahedron);
  while (m.tri_stock().first()) m.del_tri(m.tri_stock().first());
  EXPECT_EQ(m.lines_size(), 0u);
  EXPECT_EQ(m.points_size(), 0u);
}

TEST(ExactMeshQuantisation, CoordinatesBecomeTheSimplestFractionWithinResolution) {
  mesh_t m = make({{{0.1, 0, 0}, {1, 0, 0}, {0, 1.0 / 3, 0}, {}}}, 1e-6);
  const auto tris = m.to_exact_tris();
  ASSERT_EQ(tris.size(), 1u);
  EXPECT_EQ(tris[0][0].x, fr(1, 10));
  EXPECT_EQ(tris[0][2].y, fr(1, 3));
}

TEST(ExactMeshQuantisation, TriangleCollapsingAtTheResolutionIsDropped) {
  const std::vector<stl_tri_t> soup = {{{0, 0, 0}, {1e-6, 0, 0}, {0, 1, 0}, {}}};
  EXPECT_EQ(make(soup, 1e-4).tris_size(), 0u);
  EXPECT_EQ(make(soup, 1e-9).tris_size(), 1u);
}

TEST(ExactMeshNormals, GetTrisGivesOutwardUnitNormalsBitIdenticallyTwice) {
  mesh_t m = make(quvra_test::box_soup(0, 0, 0, 1, 1, 1));
  std::vector<double> first(12 * 12), second(12 * 12);
  m.get_tris(first.data());
  m.get_tris(second.data());
  EXPECT_EQ(std::memcmp(first.data(), second.data(), first.size() * sizeof(double)), 0);
  for (std::size_t t = 0; t < 12; ++t) {
    const double* r = first.data() + 12 * t;
    const double centre[3] = {(r[0] + r[3] + r[6]) / 3 - 0.5, (r[1] + r[4] + r[7]) / 3 - 0.5,
                              (r[2] + r[5] + r[8]) / 3 - 0.5};
    EXPECT_GT(centre[0] * r[9] + centre[1] * r[10] + centre[2] * r[11], 0);
    EXPECT_EQ(r[9] * r[9] + r[10] * r[10] + r[11] * r[11], 1.0);
  }
}

TEST(ExactMeshNormals, IntegerNormalIsThePrimitiveDirection) {
  mesh_t m = make({{{0, 0, 0}, {0.5, 0, 0}, {0, 0.25, 0.25}, {}}});
  auto* t = m.tri_stock().first();
  t->reset_integer_normal();
  EXPECT_EQ(t->integer_normal.x, fr(0));
  EXPECT_EQ(t->integer_normal.y, fr(-1));
  EXPECT_EQ(t->integer_normal.z, fr(1));
}

TEST(ExactMeshBoundary, RefusesBadArgumentsAndReportsSizesAndBoxes) {
  const auto box = quvra_test::box_soup(-1, 0, 0, 1, 2, 3);
  const auto* records = reinterpret_cast<const double*>(box.data());
  EXPECT_EQ(topo_stl3wfr__new(-1, records, 1e-4), nullptr);
  EXPECT_EQ(topo_stl3wfr__new(1, nullptr, 1e-4), nullptr);
  EXPECT_EQ(topo_stl3wfr__new(12, records, 0), nullptr);
  EXPECT_EQ(topo_stl3wfr__new(12, records, NAN), nullptr);
  topo_stl3wfr_t* m = topo_stl3wfr__new(12, records, 1e-4);
  ASSERT_NE(m, nullptr);
  EXPECT_EQ(topo_stl3wfr__tris_size(m), 12u);
  double b[6] = {INFINITY, INFINITY, INFINITY, -INFINITY, -INFINITY, -INFINITY};
  topo_stl3wfr__expand_to_box3d(m, b);
  EXPECT_EQ(std::vector<double>(b, b + 6), (std::vector<double>{-1, 0, 0, 1, 2, 3}));
  topo_stl3wfr__delete(m);
  topo_stl3wfr__delete(nullptr);
  EXPECT_EQ(topo_stl3wfr__tris_size(nullptr), 0u);
}

// Broken links end the process with the check's message and the header that
// holds the check.
class ExactMeshLinkChecks : public ::testing::Test {
 protected:
  void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
  mesh_t m = make(quvra_test::box_soup(0, 0, 0, 1, 1, 1));
};

TEST_F(ExactMeshLinkChecks, TriangleStock) {
  auto* t = m.tri_stock().first();
  geom::topo_tri3fr_t<fr> stranger{t->p, t->l};
  EXPECT_DEATH(m.tri_stock().del(&stranger),
               "topo_tri3fr_stock_t::del: tri not in stock\n.*\n.*in file inc/geom/topo/topo_tri3wfr_t");
  EXPECT_DEATH(
      {
        std::erase(t->p[1]->tris, t);
        m.tri_stock().del(t);
      },
      "topo_tri3fr_stock_t::del: point->tris missing the tri");
}

TEST_F(ExactMeshLinkChecks, LineStock) {
  auto* t = m.tri_stock().first();
  auto* line = t->l[0];
  geom::topo_line3fr_t<fr> stranger{line->p0, line->p1};
  EXPECT_DEATH(m.line_stock().del(&stranger),
               "topo_line3fr_stock_t::del: line not in stock\n.*\n.*in file inc/geom/topo/topo_line3wfr_t");
  EXPECT_DEATH(m.line_stock().del(line), "topo_line3fr_stock_t::del: line still owned by a tri");
  EXPECT_DEATH(
      {
        line->tri = nullptr;
        std::erase(line->p0->forward_lines, line);
        m.line_stock().del(line);
      },
      "topo_line3fr_stock_t::del: p0->forward_lines missing the line");
  EXPECT_DEATH(
      {
        line->tri = nullptr;
        std::erase(line->p1->backward_lines, line);
        m.line_stock().del(line);
      },
      "topo_line3fr_stock_t::del: p1->backward_lines missing the line");
}

TEST_F(ExactMeshLinkChecks, PointStock) {
  auto* p = m.tri_stock().first()->p[0];
  geom::topo_point3fr_t<fr> stranger{p->pos, {}, {}, {}};
  EXPECT_DEATH(m.del(&stranger),
               "topo_point3fr_stock_t::del: point not in stock\n.*\n.*in file inc/geom/topo/topo_point3wfr_stock_t");
  EXPECT_DEATH(m.del(p), "topo_point3fr_stock_t::del: point still referenced");
}

TEST_F(ExactMeshLinkChecks, ZeroAreaTriangleHasNoNormal) {
  mesh_t flat = make({{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {}}});
  EXPECT_DEATH(flat.tri_stock().first()->reset_integer_normal(),
               "topo_tri3fr_t::reset_integer_normal: a zero-area triangle has no normal");
  std::vector<double> out(12);
  flat.get_tris(out.data());
  EXPECT_TRUE(std::isnan(out[9]));
}

}  // namespace
