#include "mech/apt_t.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "geom/Stl3d.h"
#include "geom/topo/topo_stl3.h"
#include "mech/apt_derivative_t.h"

namespace {

struct named_tool {
  const char* name;
  mech::apt_t apt;
};

const double deg = M_PI / 180;

// Flat, ball, bull-nose, drill (118 degree point) and a tapered ball.
const named_tool tools[] = {
    {"flat", {10, 0, 5, 0, 0, 0, 30}},
    {"ball", {10, 5, 0, 5, 0, 0, 30}},
    {"bull_nose", {10, 2, 3, 2, 0, 0, 30}},
    {"drill", {10, 0, 5, 5 * std::tan(31 * deg), 31 * deg, 0, 40}},
    {"tapered_ball", {6, 3, 0, 3, 0, 5 * deg, 30}},
    // A bottom cone through the tip touches the arc when f cos a - e sin a = r.
    {"tapered_bull_nose", {12, 1.5, 4.5, (1.5 + 4.5 * std::sin(10 * deg)) / std::cos(10 * deg), 10 * deg, 8 * deg, 25}},
};

class apt_tool : public testing::TestWithParam<named_tool> {};
INSTANTIATE_TEST_SUITE_P(cutters, apt_tool, testing::ValuesIn(tools),
                         [](const auto& info) { return std::string(info.param.name); });

// The outline runs along the bottom cone into the arc and out along the
// flank without a kink: at each joint the arc's tangent is the cone's
// direction, and the joint lies on the arc's circle.
TEST_P(apt_tool, joints_are_on_the_arc_and_tangent_continuous) {
  const mech::apt_t& t = GetParam().apt;
  const mech::apt_derivative_t der(t);
  const double z6 = der.v[6], r7 = der.v[7], z8 = der.v[8], r9 = der.v[9];
  EXPECT_NEAR(std::hypot(z6 - t.f, r7 - t.e), t.r, 1e-12);
  EXPECT_NEAR(std::hypot(z8 - t.f, r9 - t.e), t.r, 1e-12);
  // Bottom: from the tip (or straight across, when flat) to the first joint.
  const double bottom_dir[2] = {std::sin(t.a), std::cos(t.a)};
  if (z6 != 0) {
    const double len = std::hypot(z6, r7);
    EXPECT_NEAR(z6 / len, bottom_dir[0], 1e-9);
    EXPECT_NEAR(r7 / len, bottom_dir[1], 1e-9);
  }
  // Flank: radius grows by the slope per unit of height.
  EXPECT_NEAR(der.v[5], std::tan(t.b), 1e-12);
  if (t.r > 0) {
    // Numerically: a small step along the circle from each joint goes the
    // way of the neighbouring cone.
    const double a0 = std::atan2(z6 - t.f, r7 - t.e), a1 = std::atan2(z8 - t.f, r9 - t.e);
    const double h = 1e-6;
    const double in[2] = {t.r * (std::sin(a0 + h) - std::sin(a0)), t.r * (std::cos(a0 + h) - std::cos(a0))};
    EXPECT_NEAR(std::atan2(in[0], in[1]), std::atan2(bottom_dir[0], bottom_dir[1]), 1e-5);
    const double out[2] = {t.r * (std::sin(a1) - std::sin(a1 - h)), t.r * (std::cos(a1) - std::cos(a1 - h))};
    EXPECT_NEAR(std::atan2(out[1], out[0]), std::atan2(der.v[5], 1.0), 1e-5);
  }
}

// Every directed edge is met once by its reverse, and the divergence
// volume is positive and close to the solid of revolution's.
TEST_P(apt_tool, mesh_is_closed_with_outward_faces) {
  const mech::apt_t& t = GetParam().apt;
  geom::Stl3d soup = t.get_Stl3d(48, 8);
  ASSERT_GT(soup.stl->tris.size(), 0u);
  std::map<std::array<double, 6>, int> edges;
  double volume = 0;
  for (const auto& tri : soup.stl->tris) {
    const std::array<double, 3>* c[3] = {&tri.a, &tri.b, &tri.c};
    for (int k = 0; k < 3; ++k) {
      const auto& p = *c[k];
      const auto& q = *c[(k + 1) % 3];
      ++edges[{p[0], p[1], p[2], q[0], q[1], q[2]}];
    }
    volume += (tri.a[0] * (tri.b[1] * tri.c[2] - tri.b[2] * tri.c[1]) -
               tri.a[1] * (tri.b[0] * tri.c[2] - tri.b[2] * tri.c[0]) +
               tri.a[2] * (tri.b[0] * tri.c[1] - tri.b[1] * tri.c[0])) /
              6;
    EXPECT_TRUE(std::isnan(tri.normal[0]));
  }
  for (const auto& [e, n] : edges) {
    EXPECT_EQ(n, 1);
    EXPECT_EQ(edges.count({e[3], e[4], e[5], e[0], e[1], e[2]}), 1u);
  }
  // Pappus over the outline closed along the axis, as a bound check: the
  // mesh lies inside the round solid and holds most of it.
  geom::Stl3d fine = t.get_Stl3d(720, 64);
  double round = 0;
  for (const auto& tri : fine.stl->tris)
    round += (tri.a[0] * (tri.b[1] * tri.c[2] - tri.b[2] * tri.c[1]) -
              tri.a[1] * (tri.b[0] * tri.c[2] - tri.b[2] * tri.c[0]) +
              tri.a[2] * (tri.b[0] * tri.c[1] - tri.b[1] * tri.c[0])) /
             6;
  EXPECT_GT(volume, 0.98 * round);
  EXPECT_LE(volume, round);
}

TEST(apt_t, flat_end_mill_is_a_prism_over_its_polygon) {
  const mech::apt_t flat{10, 0, 5, 0, 0, 0, 30};
  geom::Stl3d soup = flat.get_Stl3d(6, 1);
  // Bottom fan, one band, top fan.
  EXPECT_EQ(soup.stl->tris.size(), 6u * 4);
  geom::topo_stl3d mesh(*soup.stl);
  EXPECT_EQ(mesh.point_count(), 14u);
}

TEST(apt_t, quarter_arc_with_one_step_has_no_inner_arc_point) {
  const mech::apt_t bull{10, 2, 3, 2, 0, 0, 30};
  // Rings at the bottom joint, the flank joint and the top, each with a
  // band to the next, and fans at both ends.
  EXPECT_EQ(bull.get_Stl3d(8, 1).stl->tris.size(), 8u * (1 + 2 + 2 + 1));
}

TEST(apt_t, bad_sizes_give_an_empty_soup) {
  const mech::apt_t bull{10, 2, 3, 2, 0, 0, 30};
  EXPECT_TRUE(bull.get_Stl3d(2, 4).stl->tris.empty());
  EXPECT_TRUE(bull.get_Stl3d(16, 0).stl->tris.empty());
  const mech::apt_t broken{10, 2, 3, 2, 0, NAN, 30};
  EXPECT_TRUE(broken.get_Stl3d(16, 4).stl->tris.empty());
}

}  // namespace
