#include "cbtr/tool/convex_sweep.h"

#include <gtest/gtest.h>

#include <cmath>

#include "geom/Stl3d.h"
#include "geom/topo/wrap_convex_hull.h"
#include "mech/apt_t.h"
#include "soups.h"
#include "tool_volume_checks.h"

namespace {

using geom::fr;
using quvra_test::exact_point;

geom::mat4d turn_about_z(double angle, double tx, double ty, double tz) {
  const double c = std::cos(angle), s = std::sin(angle);
  return {{c, s, 0, 0, -s, c, 0, 0, 0, 0, 1, 0, tx, ty, tz, 1}};
}

cbtr::tool_tris_t hull_tris(geom::topo_stl3wfr_t& hull) {
  cbtr::tool_tris_t out;
  for (const auto* t = hull.tri_stock().first(); t; t = t->next)
    out.push_back(cbtr::make_tool_tri(t->p[0]->pos, t->p[1]->pos, t->p[2]->pos,
                                      cbtr::reduced_cross(t->p[0]->pos, t->p[1]->pos, t->p[2]->pos)));
  return out;
}

// Unit cube corners, edge mid-points, face centres and inner points.
std::vector<geom::vec3fr> cube_cloud() {
  std::vector<geom::vec3fr> pts;
  for (int x = 0; x <= 2; ++x)
    for (int y = 0; y <= 2; ++y)
      for (int z = 0; z <= 2; ++z) pts.push_back(exact_point(x / 2.0, y / 2.0, z / 2.0));
  pts.push_back(exact_point(0.25, 0.75, 0.5));
  return pts;
}

void expect_unit_cube(const cbtr::tool_tris_t& tris) {
  EXPECT_EQ(quvra_test::closure_fault(tris), "");
  EXPECT_TRUE(eq(quvra_test::exact_volume(tris, exact_point(0, 0, 0)), fr(1)));
  EXPECT_TRUE(eq(quvra_test::exact_volume(tris, exact_point(3, -2, 5)), fr(1)));
  for (const auto& t : tris) {
    EXPECT_FALSE(cbtr::is_zero(t.normal)) << "a triangle without area";
    for (const geom::vec3fr* p : {&t.a, &t.b, &t.c}) {
      // Face centres lie inside their face's polygon.
      const int halves = (eq(p->x, fr(1, 2)) ? 1 : 0) + (eq(p->y, fr(1, 2)) ? 1 : 0) + (eq(p->z, fr(1, 2)) ? 1 : 0);
      EXPECT_LT(halves, 2);
    }
  }
}

TEST(wrap_convex_hull, coplanar_and_collinear_points_make_sliver_free_faces_from_the_extreme_point) {
  auto hull = geom::wrap_convex_hull(cube_cloud(), {});
  expect_unit_cube(hull_tris(*hull));
  EXPECT_TRUE(hull->is_seamless());
}

TEST(wrap_convex_hull, seeds_give_the_same_hull_and_a_contradicting_seed_is_dropped) {
  const std::vector<geom::vec3fr> pts = cube_cloud();
  // Indices: x * 9 + y * 3 + z. A bottom triangle, and one through the
  // inside of the cube that is no face at all.
  expect_unit_cube(hull_tris(*geom::wrap_convex_hull(pts, {{0, 6, 24}})));
  expect_unit_cube(hull_tris(*geom::wrap_convex_hull(pts, {{0, 26, 8}, {0, 6, 24}})));
}

TEST(wrap_convex_hull, many_inner_and_face_points_leave_the_cube_of_its_corners) {
  // Enough points that whole boxes of them are passed over behind the faces
  // as they turn; none of them may hide a corner.
  std::vector<geom::vec3fr> pts;
  unsigned state = 12345;
  const auto next = [&] {
    state = state * 1103515245u + 12345u;
    return static_cast<int>((state >> 16) % 63) + 1;
  };
  for (int i = 0; i < 600; ++i) {
    std::array<double, 3> p = {next() / 64.0, next() / 64.0, next() / 64.0};
    if (i % 4 == 0) p[static_cast<std::size_t>(i / 4 % 3)] = i % 8 == 0 ? 0.0 : 1.0;
    pts.push_back(exact_point(p[0], p[1], p[2]));
  }
  for (int k = 0; k < 8; ++k) pts.push_back(exact_point(k & 1, (k >> 1) & 1, (k >> 2) & 1));
  expect_unit_cube(hull_tris(*geom::wrap_convex_hull(pts, {})));
}

TEST(wrap_convex_hull, points_in_one_plane_give_an_empty_hull) {
  std::vector<geom::vec3fr> flat;
  for (int i = 0; i < 5; ++i) flat.push_back(exact_point(i, i * i, 0));
  EXPECT_EQ(geom::wrap_convex_hull(flat, {})->tris_size(), 0u);
}

TEST(convex_sweep, quarter_turn_of_a_cube_gives_the_hull_of_both_poses) {
  geom::topo_stl3d cube(quvra_test::box_soup(0, 0, 0, 1, 1, 1).data()->a.data(), 12);
  const cbtr::tool_tris_t tris =
      cbtr::build_convex_sweep(cube, geom::mat4d::identity(), turn_about_z(M_PI / 2, 0, 0, 0), 1e-6);
  EXPECT_EQ(quvra_test::closure_fault(tris), "");
  EXPECT_TRUE(eq(quvra_test::exact_volume(tris, exact_point(0, 0, 0)), fr(2)));
  EXPECT_TRUE(eq(quvra_test::exact_volume(tris, exact_point(4, 1, -3)), fr(2)));
}

TEST(convex_sweep, identical_poses_give_the_tool_itself) {
  geom::topo_stl3d cube(quvra_test::box_soup(0, 0, 0, 1, 1, 1).data()->a.data(), 12);
  const geom::mat4d at = turn_about_z(0, 2, 3, 4);
  const cbtr::tool_tris_t tris = cbtr::build_convex_sweep(cube, at, at, 1e-6);
  EXPECT_EQ(quvra_test::closure_fault(tris), "");
  EXPECT_TRUE(eq(quvra_test::exact_volume(tris, exact_point(0, 0, 0)), fr(1)));
}

// Largest distance by which a vertex of the tool at either pose lies
// outside a face of the hull.
double worst_escape(const cbtr::tool_tris_t& hull, geom::topo_stl3d& tool, const geom::mat4d& pose) {
  double worst = -1;
  for (auto& t : hull) {
    cbtr::tool_tri_t face = t;
    const geom::vec3d n = cbtr::unit_of(face.normal);
    const geom::vec3d a = geom::to_vec3d(face.a);
    for (const auto& p : tool.points()) {
      const geom::vec3d q = pose.apply(p.pos());
      worst = std::max(worst, n.x * (q.x - a.x) + n.y * (q.y - a.y) + n.z * (q.z - a.z));
    }
  }
  return worst;
}

TEST(convex_sweep, rotating_bull_nose_hull_is_closed_and_holds_the_tool_at_both_poses) {
  const mech::apt_t bull{10, 2, 3, 2, 0, 0, 25};
  geom::Stl3d soup = bull.get_Stl3d(24, 4);
  geom::topo_stl3d tool(*soup.stl);
  const double resolution = 1e-4;
  const geom::mat4d start = turn_about_z(0, 1, 2, 3);
  geom::mat4d end = turn_about_z(0.3, 4, 2.5, 3.5);
  // Tilt about x as well, so that no pose keeps the axis.
  const double c = std::cos(0.2), s = std::sin(0.2);
  end = geom::mat4d{{1, 0, 0, 0, 0, c, s, 0, 0, -s, c, 0, 0, 0, 0, 1}} * end;
  cbtr::tool_tris_t tris = cbtr::build_convex_sweep(tool, start, end, resolution);
  EXPECT_EQ(quvra_test::closure_fault(tris), "");
  EXPECT_TRUE(quvra_test::normals_follow_corners(tris));
  // Vertices are snapped to the grid, so they may stand out by that much.
  EXPECT_LT(worst_escape(tris, tool, start), 2 * resolution);
  EXPECT_LT(worst_escape(tris, tool, end), 2 * resolution);
}

}  // namespace
