// The welded floating mesh built from soups with known topology.

#include "geom/topo/topo_stl3.h"
#include "geom/topo_stl3d.h"

#include <gtest/gtest.h>

#include <cmath>

#include "soups.h"

namespace {

using geom::stl_tri_t;
using geom::topo_stl3d;

topo_stl3d make(const std::vector<stl_tri_t>& soup) {
  return topo_stl3d(reinterpret_cast<const double*>(soup.data()), soup.size());
}

std::size_t twinned_lines(topo_stl3d& m) {
  std::size_t n = 0;
  for (auto& l : m.lines()) n += l.twin != nullptr;
  return n;
}

TEST(FloatingMeshTopology, ClosedSolidsHaveEulerCountsAndFullTwins) {
  struct solid {
    std::vector<stl_tri_t> soup;
    std::size_t points, tris;
  };
  const std::vector<solid> solids = {
      {quvra_test::box_soup(0, 0, 0, 1, 2, 3), 8, 12},
      {{{{0, 0, 0}, {0, 1, 0}, {1, 0, 0}, {}},
        {{0, 0, 0}, {1, 0, 0}, {0, 0, 1}, {}},
        {{0, 0, 0}, {0, 0, 1}, {0, 1, 0}, {}},
        {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {}}},
       4,
       4},
      {quvra_test::torus_soup(5, 1, 24, 12), 24 * 12, 2 * 24 * 12},
  };
  for (const solid& s : solids) {
    topo_stl3d m = make(s.soup);
    EXPECT_EQ(m.point_count(), s.points);
    EXPECT_EQ(m.tri_count(), s.tris);
    EXPECT_EQ(m.line_count(), 3 * s.tris);
    EXPECT_EQ(twinned_lines(m), m.line_count());
  }
}

TEST(FloatingMeshTopology, LinksAgreeBetweenPointsLinesAndTriangles) {
  topo_stl3d m = make(quvra_test::box_soup(0, 0, 0, 1, 1, 1));
  for (auto& l : m.lines()) {
    EXPECT_EQ(l.twin->twin, &l);
    EXPECT_EQ(l.twin->p0, l.p1);
    ASSERT_NE(l.tri, nullptr);
  }
  for (auto& t : m.tris()) {
    const auto corners = t.corners();
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(t.lines[i]->p0, corners[i]);
      EXPECT_EQ(t.lines[i]->tri, &t);
    }
  }
  for (auto& p : m.points()) EXPECT_EQ(p.forward_lines.size(), p.backward_lines.size());
}

TEST(FloatingMeshWelding, NegativeZeroWeldsWithZero) {
  std::vector<stl_tri_t> soup = {{{0.0, 0.0, 0.0}, {1, 0, 0}, {0, 1, 0}, {}},
                                 {{-0.0, -0.0, -0.0}, {0, 1, 0}, {0, 0, 1}, {}}};
  EXPECT_EQ(make(soup).point_count(), 4u);
}

TEST(FloatingMeshWelding, DegenerateAndDuplicateTrianglesAreDropped) {
  auto soup = quvra_test::box_soup(0, 0, 0, 1, 1, 1);
  soup.push_back(soup[0]);                                // exact duplicate
  soup.push_back({soup[1].b, soup[1].c, soup[1].a, {}});  // same triangle, rotated
  soup.push_back({{5, 5, 5}, {5, 5, 5}, {6, 5, 5}, {}});  // two equal corners
  topo_stl3d m = make(soup);
  EXPECT_EQ(m.tri_count(), 12u);
  // Points are welded before a triangle is judged, so the dropped one's
  // two distinct points stay, unused.
  EXPECT_EQ(m.point_count(), 10u);
  EXPECT_EQ(m.line_count(), 36u);
}

TEST(FloatingMeshWelding, ReversedCopyIsADifferentTriangle) {
  std::vector<stl_tri_t> soup = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {}}, {{0, 0, 0}, {0, 1, 0}, {1, 0, 0}, {}}};
  topo_stl3d m = make(soup);
  EXPECT_EQ(m.tri_count(), 2u);
  EXPECT_EQ(twinned_lines(m), 6u);
}

TEST(FloatingMeshNormals, FromVerticesNotFromTheSource) {
  std::vector<stl_tri_t> soup = {{{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {9, 9, 9}}};
  topo_stl3d m = make(soup);
  double out[12];
  m.get_tris(out);
  EXPECT_EQ(std::vector<double>(out + 9, out + 12), (std::vector<double>{0, 0, 1}));
}

TEST(FloatingMeshNormals, VertexNormalsSmoothShallowAnglesAndKeepCreases) {
  // Box: every corner meets faces at 90 degrees, which stay creases.
  topo_stl3d box = make(quvra_test::box_soup(0, 0, 0, 1, 1, 1));
  for (auto& t : box.tris())
    for (const auto& vn : box.vertex_normals(t)) {
      EXPECT_NEAR(vn.x, t.get_normal().x, 1e-15);
      EXPECT_NEAR(vn.z, t.get_normal().z, 1e-15);
    }
  // A fine sphere: neighbours differ by a few degrees, so vertex normals
  // follow the radius at each vertex.
  topo_stl3d sphere = make(quvra_test::sphere_soup(1, 40, 80));
  for (auto& t : sphere.tris()) {
    const auto& vn = sphere.vertex_normals(t);
    const auto corners = t.corners();
    for (int k = 0; k < 3; ++k) {
      const auto p = corners[k]->pos();
      const double along = geom::dot(vn[k], p) / std::sqrt(geom::dot(p, p));
      EXPECT_GT(along, 0.995);
    }
  }
  // With round_cos above 1 nothing smooths: vertex normals are face normals.
  topo_stl3d faceted = make(quvra_test::sphere_soup(1, 8, 16));
  faceted.set_round_cos(1.5);
  auto& t = faceted.tris()[20];
  EXPECT_NEAR(faceted.vertex_normals(t)[1].y, t.get_normal().y, 1e-15);
}

TEST(FloatingMeshNormals, BendIsTheSquaredCosineAcrossALine) {
  topo_stl3d box = make(quvra_test::box_soup(0, 0, 0, 1, 1, 1));
  std::size_t creases = 0, flats = 0;
  for (auto& l : box.lines()) {
    const double b = box.bend(l);
    EXPECT_EQ(b, l.twin->bend);
    creases += b == 0.0;                 // 90 degrees between faces
    flats += std::abs(b - 1.0) < 1e-15;  // the diagonal of a face
  }
  EXPECT_EQ(creases, 24u);
  EXPECT_EQ(flats, 12u);
  std::vector<stl_tri_t> open = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {}}};
  topo_stl3d single = make(open);
  EXPECT_TRUE(std::isnan(single.bend(single.lines()[0])));
}

TEST(FloatingMeshBox, CoversPointsAndFollowsAMatrix) {
  topo_stl3d m = make(quvra_test::box_soup(-1, -2, -3, 1, 2, 3));
  geom::box3d b;
  m.expand_to_box3d(&b);
  EXPECT_EQ(b.v, (std::array<double, 6>{-1, -2, -3, 1, 2, 3}));
  geom::mat4d shift = geom::mat4d::identity();
  shift.m[12] = 10;
  geom::box3d moved;
  m.expand_to_box3d(&moved, &shift);
  EXPECT_EQ(moved.v, (std::array<double, 6>{9, -2, -3, 11, 2, 3}));
}

}  // namespace

namespace {

TEST(FloatingMeshBoundary, BuildsFromArraysSoupsAndFilesAndRefusesBadCounts) {
  const auto box = quvra_test::box_soup(0, 0, 0, 1, 1, 1);
  const auto* records = reinterpret_cast<const double*>(box.data());
  topo_stl3d* from_array = topo_stl3d__ctor(12, records);
  ASSERT_NE(from_array, nullptr);
  EXPECT_EQ(topo_stl3d__count(from_array), 12);
  EXPECT_EQ(topo_stl3d__get_round_cos(from_array), 0.8);
  topo_stl3d__set_round_cos(from_array, 0.5);
  EXPECT_EQ(topo_stl3d__get_round_cos(from_array), 0.5);
  std::vector<double> out(12 * 12);
  topo_stl3d__get_tris(from_array, out.data());
  EXPECT_EQ(std::vector<double>(out.begin(), out.begin() + 9), std::vector<double>(records, records + 9));
  topo_stl3d__delete(from_array);

  stl3d_t* soup = stl3d__new_by_copy_array(records, 12);
  topo_stl3d* from_soup = topo_stl3d__new_by_stl3d(soup);
  stl3d__delete(soup);
  double b[6] = {INFINITY, INFINITY, INFINITY, -INFINITY, -INFINITY, -INFINITY};
  topo_stl3d__expand_to_box3d(from_soup, b);
  EXPECT_EQ(std::vector<double>(b, b + 6), (std::vector<double>{0, 0, 0, 1, 1, 1}));
  topo_stl3d__dtor(from_soup);

  EXPECT_EQ(topo_stl3d__ctor(-1, records), nullptr);
  EXPECT_EQ(topo_stl3d__ctor(3, nullptr), nullptr);
  EXPECT_EQ(topo_stl3d__new_by_stl3d(nullptr), nullptr);
  topo_stl3d__delete(nullptr);
  EXPECT_EQ(topo_stl3d__count(nullptr), 0);
}

TEST(FloatingMeshBoundary, MissingFileGivesAnEmptyMeshWithTheReadWarning) {
  testing::internal::CaptureStderr();
  topo_stl3d* m = topo_stl3d__new_by_filepath("/nonexistent/part.stl");
  EXPECT_NE(testing::internal::GetCapturedStderr().find("stl_process_status[1]:/nonexistent/part.stl"),
            std::string::npos);
  ASSERT_NE(m, nullptr);
  EXPECT_EQ(topo_stl3d__count(m), 0);
  topo_stl3d__delete(m);
}

}  // namespace
