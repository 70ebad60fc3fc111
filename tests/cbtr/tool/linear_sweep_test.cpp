#include "cbtr/tool/linear_sweep.h"

#include <gtest/gtest.h>

#include "soups.h"
#include "tool_volume_checks.h"

namespace {

using geom::fr;
using quvra_test::exact_point;

constexpr double resolution = 1e-6;

std::unique_ptr<geom::topo_stl3wfr_t> exact_mesh(const std::vector<geom::stl_tri_t>& soup) {
  return std::make_unique<geom::topo_stl3wfr_t>(reinterpret_cast<const double*>(soup.data()), soup.size(), resolution);
}

// A triangle (0,0) (4,0) (1,3) in the xy plane, from z = 0 to z = 2.
std::vector<geom::stl_tri_t> prism_soup() {
  const std::array<std::array<double, 2>, 3> base = {{{0, 0}, {4, 0}, {1, 3}}};
  const auto at = [&](int i, double z) { return std::array<double, 3>{base[i % 3][0], base[i % 3][1], z}; };
  std::vector<geom::stl_tri_t> out;
  const std::array<double, 3> n = {0, 0, 0};
  out.push_back({at(0, 0), at(2, 0), at(1, 0), n});
  out.push_back({at(0, 2), at(1, 2), at(2, 2), n});
  for (int i = 0; i < 3; ++i) {
    out.push_back({at(i, 0), at(i + 1, 0), at(i + 1, 2), n});
    out.push_back({at(i, 0), at(i + 1, 2), at(i, 2), n});
  }
  return out;
}

geom::mat4d pose(double tx, double ty, double tz, bool quarter_turn = false) {
  geom::mat4d m = geom::mat4d::identity();
  if (quarter_turn) m.m = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
  m.m[12] = tx;
  m.m[13] = ty;
  m.m[14] = tz;
  return m;
}

cbtr::tool_tris_t sweep(geom::topo_stl3wfr_t& mesh, const geom::mat4d& start, const geom::mat4d& end) {
  return cbtr::build_linear_sweep(mesh, cbtr::to_exact_pose(start, resolution), cbtr::to_exact_pose(end, resolution));
}

// Closed, outward, and of the expected volume about two reference points.
void expect_volume(const cbtr::tool_tris_t& tris, double expected) {
  EXPECT_EQ(quvra_test::closure_fault(tris), "");
  EXPECT_TRUE(quvra_test::normals_follow_corners(tris));
  const fr want = geom::from_double(expected, 1e-9);
  EXPECT_TRUE(eq(quvra_test::exact_volume(tris, exact_point(0, 0, 0)), want));
  EXPECT_TRUE(eq(quvra_test::exact_volume(tris, exact_point(7, -3, 11)), want));
}

struct move_case {
  double dx, dy, dz;
  double box_volume;    // box 2 x 1 x 3
  double prism_volume;  // prism of area 6, height 2
};

class linear_sweep_volume : public testing::TestWithParam<move_case> {};

// Box: abc + |dx| bc + |dy| ac + |dz| ab. Prism: A H + |dz| A + H times the
// base's width across the motion.
INSTANTIATE_TEST_SUITE_P(axis_and_oblique_moves, linear_sweep_volume,
                         testing::Values(move_case{5, 0, 0, 21, 12 + 2 * 15}, move_case{0, 0, 4, 6 + 4 * 2, 12 + 24},
                                         move_case{0, -2.5, 0, 6 + 2.5 * 6, 12 + 2 * 2.5 * 4},
                                         move_case{1.5, -2, 0.75, 24, 12 + 0.75 * 6 + 2 * 8},
                                         move_case{2, 1, 0.5, 6 + 6 + 6 + 1, 33}));

TEST_P(linear_sweep_volume, box_sweep_is_closed_and_has_the_analytic_volume) {
  const move_case c = GetParam();
  auto box = exact_mesh(quvra_test::box_soup(0, 0, 0, 2, 1, 3));
  expect_volume(sweep(*box, pose(0.25, 0.5, -1), pose(0.25 + c.dx, 0.5 + c.dy, -1 + c.dz)), c.box_volume);
}

TEST_P(linear_sweep_volume, prism_sweep_is_closed_and_has_the_analytic_volume) {
  const move_case c = GetParam();
  auto prism = exact_mesh(prism_soup());
  expect_volume(sweep(*prism, pose(-3, 2, 0.5), pose(-3 + c.dx, 2 + c.dy, 0.5 + c.dz)), c.prism_volume);
}

TEST(linear_sweep, turned_tool_sweeps_its_turned_extent) {
  // A quarter turn about z makes the 2 x 1 x 3 box 1 x 2 x 3.
  auto box = exact_mesh(quvra_test::box_soup(0, 0, 0, 2, 1, 3));
  expect_volume(sweep(*box, pose(1, 1, 1, true), pose(2.5, -1, 1.75, true)), 6 + 1.5 * 6 + 2 * 3 + 0.75 * 2);
}

TEST(linear_sweep, cube_along_a_face_normal_has_one_face_at_each_end_and_four_ruled_sides) {
  auto cube = exact_mesh(quvra_test::box_soup(0, 0, 0, 1, 1, 1));
  const cbtr::tool_tris_t tris = sweep(*cube, pose(0, 0, 0), pose(3, 0, 0));
  // Five faces at the end (the front and four edge-on sides), the back face
  // at the start, and two ruled triangles over each of its four edges.
  EXPECT_EQ(tris.size(), 10u + 2u + 8u);
  expect_volume(tris, 4);
}

TEST(linear_sweep, non_convex_tool_sweep_is_closed_and_holds_more_than_the_tool) {
  auto torus = exact_mesh(quvra_test::torus_soup(3, 1, 24, 12));
  const cbtr::tool_tris_t tris = sweep(*torus, pose(0, 0, 0), pose(1.25, 0.5, 0.75));
  EXPECT_EQ(quvra_test::closure_fault(tris), "");
  EXPECT_TRUE(quvra_test::normals_follow_corners(tris));
  fr v0 = quvra_test::exact_volume(tris, exact_point(0, 0, 0));
  EXPECT_TRUE(eq(v0, quvra_test::exact_volume(tris, exact_point(-5, 9, 2))));
  // The torus alone holds 2 pi^2 R r^2, about 59.2.
  EXPECT_GT(v0.value(), 60.0);
}

TEST(linear_sweep, zero_move_gives_the_tool_at_the_end_pose) {
  auto box = exact_mesh(quvra_test::box_soup(0, 0, 0, 2, 1, 3));
  const cbtr::tool_tris_t tris = sweep(*box, pose(1, 2, 3), pose(1, 2, 3));
  EXPECT_EQ(tris.size(), 12u);
  expect_volume(tris, 6);
}

}  // namespace
