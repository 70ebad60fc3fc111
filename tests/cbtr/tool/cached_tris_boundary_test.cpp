// Tool volumes as a host makes them: through the new_*_cached_tris calls,
// with the choice between the tool at rest, the linear and the convex sweep.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

#include "cbtr/cached_tris.h"
#include "cbtr/tool/cached_tris_t.h"
#include "geom/mat4d.h"
#include "geom/topo/topo_stl3.h"
#include "geom/topo/topo_stl3wfr_t.h"
#include "soups.h"
#include "tool_volume_checks.h"

namespace {

using geom::fr;
using quvra_test::exact_point;

constexpr double resolution = 1e-3;

struct volume_deleter {
  void operator()(cached_tris_t* t) const { delete_cached_tris(t); }
};
using volume_ptr = std::unique_ptr<cached_tris_t, volume_deleter>;

// The unit cube as both meshes of one tool.
struct cube_tool {
  std::vector<geom::stl_tri_t> soup = quvra_test::box_soup(0, 0, 0, 1, 1, 1);
  geom::topo_stl3d mesh{soup.data()->a.data(), soup.size()};
  geom::topo_stl3wfr_t exact{soup.data()->a.data(), soup.size(), resolution};

  volume_ptr sweep(const geom::mat4d& start, const geom::mat4d& end, bool allow_rotation = true) {
    return volume_ptr(
        new_sweeping_cached_tris(&mesh, &exact, start.m.data(), end.m.data(), resolution, allow_rotation));
  }
};

geom::mat4d shifted(double tx, double ty, double tz) {
  geom::mat4d m = geom::mat4d::identity();
  m.m[12] = tx;
  m.m[13] = ty;
  m.m[14] = tz;
  return m;
}

geom::mat4d turned_about_z(double angle, double tx) {
  const double c = std::cos(angle), s = std::sin(angle);
  return {{c, s, 0, 0, -s, c, 0, 0, 0, 0, 1, 0, tx, 0, 0, 1}};
}

cbtr::tool_tris_t triangles_of(const cached_tris_t& volume) {
  cbtr::tool_tris_t out;
  for (const cbtr::tri_extension_t& t : volume.tris()) out.push_back(t.tri);
  return out;
}

fr volume_of(const cached_tris_t& volume) {
  return quvra_test::exact_volume(triangles_of(volume), exact_point(0, 0, 0));
}

// The same exact corners in the same order, triangle by triangle.
bool same_triangles(const cached_tris_t& a, const cached_tris_t& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    for (int k = 0; k < 3; ++k) {
      const geom::vec3fr& p = a.tris()[i].corner(k);
      const geom::vec3fr& q = b.tris()[i].corner(k);
      if (!eq(p.x, q.x) || !eq(p.y, q.y) || !eq(p.z, q.z)) return false;
    }
  return true;
}

TEST(sweep_chooser, identical_poses_give_the_tool_at_rest_not_a_sweep) {
  cube_tool tool;
  const geom::mat4d at = shifted(2, 3, 4);
  const volume_ptr v = tool.sweep(at, at);
  ASSERT_TRUE(v);
  EXPECT_EQ(v->size(), 12u);
  EXPECT_EQ(quvra_test::closure_fault(triangles_of(*v)), "");
  EXPECT_TRUE(eq(volume_of(*v), fr(1)));
}

TEST(sweep_chooser, a_move_under_two_grid_steps_stays_at_the_end_pose_and_two_steps_sweep) {
  cube_tool tool;
  const geom::mat4d start = shifted(0, 0, 0);
  const geom::mat4d short_end = shifted(1.9 * resolution, 0, 0);
  const volume_ptr short_move = tool.sweep(start, short_end);
  const volume_ptr at_end = tool.sweep(short_end, short_end);
  ASSERT_TRUE(short_move && at_end);
  EXPECT_TRUE(same_triangles(*short_move, *at_end));

  const volume_ptr two_steps = tool.sweep(start, shifted(2 * resolution, 0, 0));
  ASSERT_TRUE(two_steps);
  EXPECT_EQ(quvra_test::closure_fault(triangles_of(*two_steps)), "");
  // The unit cube stretched along x by the snapped length of the move.
  const fr step = geom::from_double(2 * resolution, resolution);
  EXPECT_TRUE(eq(volume_of(*two_steps), fr(1) + step));
  EXPECT_GT(two_steps->size(), 12u);
}

TEST(sweep_chooser, rotation_not_allowed_gives_the_tool_at_the_end_pose_only) {
  cube_tool tool;
  const geom::mat4d end = turned_about_z(0.5, 3);
  const volume_ptr v = tool.sweep(turned_about_z(0, 0), end, false);
  const volume_ptr at_end = tool.sweep(end, end);
  ASSERT_TRUE(v && at_end);
  EXPECT_TRUE(same_triangles(*v, *at_end));
}

TEST(sweep_chooser, rotation_allowed_gives_the_hull_of_both_poses) {
  cube_tool tool;
  const volume_ptr v = tool.sweep(turned_about_z(0, 0), turned_about_z(M_PI / 2, 0));
  ASSERT_TRUE(v);
  EXPECT_EQ(quvra_test::closure_fault(triangles_of(*v)), "");
  EXPECT_TRUE(eq(volume_of(*v), fr(2)));
}

TEST(sweep_chooser, an_empty_mesh_gives_a_valid_volume_without_triangles) {
  geom::topo_stl3d mesh(nullptr, 0);
  geom::topo_stl3wfr_t exact(nullptr, 0, resolution);
  const geom::mat4d start = shifted(0, 0, 0), end = shifted(1, 0, 0);
  for (cached_tris_t* v :
       {new_sweeping_cached_tris(&mesh, &exact, start.m.data(), end.m.data(), resolution, true),
        new_stationary_cached_tris(&mesh, end.m.data(), resolution),
        new_linear_sweeping_cached_tris(&exact, start.m.data(), end.m.data(), resolution),
        new_nonlinear_sweeping_cached_tris(&mesh, start.m.data(), turned_about_z(1, 0).m.data(), resolution)}) {
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(v->size(), 0u);
    delete_cached_tris(v);
  }
}

TEST(stationary_cached_tris, a_triangle_collapsing_on_the_grid_disappears) {
  // The second triangle's tip is a tenth of a grid step off its base.
  const std::vector<geom::stl_tri_t> soup = {
      {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 0}},
      {{0, 0, 1}, {1, 0, 1}, {0.5, resolution / 10, 1}, {0, 0, 0}},
  };
  geom::topo_stl3d mesh(soup.data()->a.data(), soup.size());
  ASSERT_EQ(mesh.tri_count(), 2u);
  const geom::mat4d at = shifted(0, 0, 0);
  const volume_ptr v(new_stationary_cached_tris(&mesh, at.m.data(), resolution));
  ASSERT_TRUE(v);
  ASSERT_EQ(v->size(), 1u);
  EXPECT_TRUE(eq(v->tris()[0].corner(2).y, fr(1)));
}

TEST(cached_tris_boundary, bad_arguments_give_null_and_degenerate_poses_no_crash) {
  cube_tool tool;
  const geom::mat4d start = shifted(0, 0, 0), end = shifted(1, 0, 0);
  const double* s = start.m.data();
  const double* e = end.m.data();
  EXPECT_EQ(new_sweeping_cached_tris(nullptr, &tool.exact, s, e, resolution, true), nullptr);
  EXPECT_EQ(new_sweeping_cached_tris(&tool.mesh, nullptr, s, e, resolution, true), nullptr);
  EXPECT_EQ(new_sweeping_cached_tris(&tool.mesh, &tool.exact, nullptr, e, resolution, true), nullptr);
  EXPECT_EQ(new_stationary_cached_tris(nullptr, e, resolution), nullptr);
  EXPECT_EQ(new_linear_sweeping_cached_tris(nullptr, s, e, resolution), nullptr);
  EXPECT_EQ(new_nonlinear_sweeping_cached_tris(nullptr, s, e, resolution), nullptr);
  EXPECT_EQ(new_stationary_cached_tris(&tool.mesh, e, 0), nullptr);
  geom::mat4d with_nan = end;
  with_nan.m[5] = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(tool.sweep(start, with_nan).get(), nullptr);
  EXPECT_EQ(new_nonlinear_sweeping_cached_tris(&tool.mesh, s, with_nan.m.data(), resolution), nullptr);

  // A singular end pose squashes the tool flat; only the moving top face
  // lets points in, and they span no volume.
  geom::mat4d flat = start;
  flat.m[10] = 0;
  for (bool allow_rotation : {true, false}) {
    const volume_ptr v = tool.sweep(start, flat, allow_rotation);
    ASSERT_TRUE(v);
    EXPECT_TRUE(eq(volume_of(*v), fr(0)));
  }
  const geom::mat4d zero{};
  const volume_ptr collapsed = tool.sweep(zero, zero);
  ASSERT_TRUE(collapsed);
  EXPECT_EQ(collapsed->size(), 0u);
  delete_cached_tris(nullptr);
}

}  // namespace
