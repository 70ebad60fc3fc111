#include "host/tool_mesh.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>
#include <stdexcept>
#include <tuple>

#include "host/mesh_volume.h"
#include "interp/tool_desc_parse.h"

namespace mill {
namespace {

constexpr double pi = std::numbers::pi;

// Every edge of a closed, consistently oriented surface is run once each
// way; corners are compared exactly because the revolve reuses them.
bool closed_and_oriented(const std::vector<double>& tris) {
  using corner = std::tuple<double, double, double>;
  std::map<std::pair<corner, corner>, int> edges;
  for (std::size_t t = 0; t < tris.size(); t += 12)
    for (int i = 0; i < 3; ++i) {
      const double* a = &tris[t + 3 * i];
      const double* b = &tris[t + 3 * ((i + 1) % 3)];
      ++edges[{{a[0], a[1], a[2]}, {b[0], b[1], b[2]}}];
    }
  for (const auto& [e, n] : edges) {
    const auto twin = edges.find({e.second, e.first});
    if (n != 1 || twin == edges.end() || twin->second != 1) return false;
  }
  return !edges.empty();
}

// A faceted solid of revolution lies inside the true one, and no deeper
// than the chord tolerance anywhere on its surface.
void expect_volume(const std::vector<double>& tris, double exact, double area, double tol) {
  EXPECT_TRUE(closed_and_oriented(tris));
  const double v = enclosed_volume(tris);
  EXPECT_LE(v, exact * (1 + 1e-12));
  EXPECT_GE(v, exact - area * tol);
}

// Each record's normal is a unit vector along the turn of its corners.
void expect_outward_unit_normals(const std::vector<double>& tris) {
  for (std::size_t t = 0; t < tris.size(); t += 12) {
    const double* p = &tris[t];
    const double u[3] = {p[3] - p[0], p[4] - p[1], p[5] - p[2]};
    const double v[3] = {p[6] - p[0], p[7] - p[1], p[8] - p[2]};
    const double n[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
    ASSERT_NEAR(std::hypot(p[9], p[10], p[11]), 1, 1e-12) << "record " << t / 12;
    ASSERT_GT(n[0] * p[9] + n[1] * p[10] + n[2] * p[11], 0) << "record " << t / 12;
  }
}

TEST(ToolMesh, AFlatMillIsAClosedCylinderWithNormals) {
  const double tol = 0.01;
  const std::vector<double> tris = tool_surface(flat_tool(6), 20, tol);
  expect_volume(tris, pi * 9 * 20, 2 * pi * 9 + 2 * pi * 3 * 20, tol);
  expect_outward_unit_normals(tris);
}

TEST(ToolMesh, ABallMillIsACylinderOnAHemisphere) {
  const double tol = 0.005;
  const double exact = pi * 25 * 25 + 2 * pi * 125 / 3;
  expect_volume(tool_surface(ball_tool(10), 30, tol), exact, pi * 25 + 2 * pi * 5 * 25 + 2 * pi * 25, tol);
}

TEST(ToolMesh, ABullNoseHasItsCornerArcAndFlatBottom) {
  const std::vector<double> tris = tool_surface(bull_tool(10, 2), 25, 0.01);
  EXPECT_TRUE(closed_and_oriented(tris));
  int on_arc = 0;
  for (std::size_t i = 0; i < tris.size(); i += 3) {
    const double z = tris[i + 2], r = std::hypot(tris[i], tris[i + 1]);
    if (i % 12 == 9) continue;  // the normal
    EXPECT_GE(z, 0);
    if (z == 0) {
      EXPECT_LE(r, 3 + 1e-12) << "the flat bottom ends where the arc starts";
    }
    if (z > 0 && z < 2) {
      EXPECT_NEAR(std::hypot(z - 2, r - 3), 2, 1e-12);
      ++on_arc;
    }
  }
  EXPECT_GT(on_arc, 0);
}

// A drill written with its corner at the tip (CUTTER/d,0,0,0,alpha,0) would
// collapse onto the axis; it must come out as a cone under a cylinder.
TEST(ToolMesh, ADrillIsAConeUnderACylinder) {
  const double tol = 0.01;
  const mech::apt_t apt = tool_apt(drill_tool(8, 90), 30);
  EXPECT_NEAR(apt.f, 4, 1e-12);
  EXPECT_EQ(apt.e, 4);
  const std::vector<double> tris = tool_surface(drill_tool(8, 90), 30, tol);
  const double side = 4 * std::sqrt(2.0);
  expect_volume(tris, pi * 16 * 4 / 3 + pi * 16 * 26, pi * 4 * side + 2 * pi * 4 * 26 + pi * 16, tol);
}

TEST(ToolMesh, ATaperedMillIsAFrustum) {
  const double tol = 0.01;
  const double top = 5 + 20 * std::tan(10 * pi / 180);
  const double exact = pi * 20 * (25 + 5 * top + top * top) / 3;
  const double slant = std::hypot(20, top - 5);
  expect_volume(tool_surface(parse_tool_desc("apt:10,0,5,0,0,10,20"), 20, tol), exact,
                pi * 25 + pi * top * top + pi * (5 + top) * slant, tol);
}

TEST(ToolMesh, FinerTolerancesGiveMoreFacetsWithinBounds) {
  const mech::apt_t bull = tool_apt(bull_tool(10, 2), 25);
  const facet_counts_t coarse = facet_counts(bull, 0.1), fine = facet_counts(bull, 0.001);
  EXPECT_LT(coarse.sides, fine.sides);
  EXPECT_LT(coarse.arc_steps, fine.arc_steps);
  EXPECT_EQ(facet_counts(bull, 10).sides, 12);
  EXPECT_EQ(facet_counts(bull, 10).arc_steps, 1);
  EXPECT_EQ(facet_counts(bull, 1e-9).sides, 128);
  EXPECT_EQ(facet_counts(bull, 1e-9).arc_steps, 64);
}

TEST(ToolMesh, AToolShorterThanItsCornerIsRefused) {
  EXPECT_THROW(tool_apt(ball_tool(10), 4), std::invalid_argument);
  // A flank leaning in closes on the axis: 5 mm at the corner, 5 - 20 tan 20 < 0 at the top.
  EXPECT_THROW(tool_apt(parse_tool_desc("apt:10,0,5,0,0,-20,20"), 20), std::invalid_argument);
}

}  // namespace
}  // namespace mill
