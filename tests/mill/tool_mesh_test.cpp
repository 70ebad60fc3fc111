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
  const double v = enclosed_volume(tris);
  EXPECT_LE(v, exact * (1 + 1e-12));
  EXPECT_GE(v, exact - area * tol);
}

TEST(ToolMesh, AFlatMillIsAClosedCylinder) {
  const double tol = 0.01;
  const std::vector<double> tris = tool_surface(flat_tool(6), 20, tol);
  EXPECT_TRUE(closed_and_oriented(tris));
  expect_volume(tris, pi * 9 * 20, 2 * pi * 9 + 2 * pi * 3 * 20, tol);
}

TEST(ToolMesh, ABallMillIsACylinderOnAHemisphere) {
  const double tol = 0.005;
  const std::vector<double> tris = tool_surface(ball_tool(10), 30, tol);
  EXPECT_TRUE(closed_and_oriented(tris));
  const double exact = pi * 25 * 25 + 2 * pi * 125 / 3;
  expect_volume(tris, exact, pi * 25 + 2 * pi * 5 * 25 + 2 * pi * 25, tol);
}

TEST(ToolMesh, ABullNoseHasItsCornerArcAndFlatBottom) {
  const tool_desc_t bull = bull_tool(10, 2);
  const std::vector<outline_point_t> o = tool_outline(bull, 25, 0.01);
  EXPECT_EQ(o[0].z, 0);
  EXPECT_NEAR(o[0].r, 3, 1e-12);  // the flat bottom ends where the arc starts
  EXPECT_NEAR(o.back().r, 5, 1e-12);
  for (std::size_t i = 1; i + 1 < o.size(); ++i)
    EXPECT_NEAR(std::hypot(o[i].z - 2, o[i].r - 3), 2, 1e-12) << "arc point " << i;
  EXPECT_TRUE(closed_and_oriented(tool_surface(bull, 25, 0.01)));
}

TEST(ToolMesh, ADrillComesToAPointAtItsTip) {
  const std::vector<outline_point_t> o = tool_outline(drill_tool(8, 90), 30, 0.01);
  ASSERT_GE(o.size(), 2u);
  EXPECT_EQ(o[0].z, 0);
  EXPECT_EQ(o[0].r, 0);
  EXPECT_NEAR(o.back().r, 4, 1e-9);
  EXPECT_TRUE(closed_and_oriented(tool_surface(drill_tool(8, 90), 30, 0.01)));
}

TEST(ToolMesh, FinerTolerancesGiveMoreSidesWithinBounds) {
  const std::vector<outline_point_t> o = tool_outline(flat_tool(6), 20, 0.1);
  EXPECT_LT(revolve_sides(o, 0.1), revolve_sides(o, 0.001));
  EXPECT_EQ(revolve_sides(o, 10), 12);
  EXPECT_EQ(revolve_sides(o, 1e-9), 128);
}

TEST(ToolMesh, AToolShorterThanItsCornerIsRefused) {
  EXPECT_THROW(tool_outline(ball_tool(10), 4, 0.01), std::invalid_argument);
}

}  // namespace
}  // namespace mill
