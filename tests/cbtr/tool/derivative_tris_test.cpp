// Floating contact triangles through the boundary, as a host builds them.

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "geom/Stl3d.h"
#include "geom/derivative_cached_tri3d.h"
#include "geom/mat4d.h"
#include "geom/stl3d_t.h"
#include "geom/topo/topo_stl3.h"

namespace {

struct vector_deleter {
  void operator()(derivative_cached_tri3d_vector* v) const { derivative_cached_tri3d__delete_vector(v); }
};
using vector_ptr = std::unique_ptr<derivative_cached_tri3d_vector, vector_deleter>;

// A quarter turn about z, then a shift by (1, 2, 3): (x, y, z) goes to
// (1 - y, 2 + x, 3 + z).
constexpr geom::mat4d turn_and_shift = {{0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1}};

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

geom::Stl3d soup_of(std::vector<geom::stl_tri_t> tris) {
  geom::Stl3d soup{geom::stl3d_ptr(new geom::stl3d_t)};
  soup.stl->tris = std::move(tris);
  return soup;
}

void expect_triple(const double* got, double x, double y, double z, const char* what) {
  EXPECT_EQ(got[0], x) << what;
  EXPECT_EQ(got[1], y) << what;
  EXPECT_EQ(got[2], z) << what;
}

// The triangle (0,0,0) (2,0,0) (0,4,0) after turn_and_shift, worked out by
// hand.
void expect_moved_right_triangle(const geom::derivative_cached_tri3d_t& t) {
  expect_triple(t.p0, 1, 2, 3, "p0");
  expect_triple(t.p1, 1, 4, 3, "p1");
  expect_triple(t.p2, -3, 2, 3, "p2");
  expect_triple(t.normal, 0, 0, 1, "normal");
  expect_triple(t.box_min, -3, 2, 3, "box_min");
  expect_triple(t.box_max, 1, 4, 3, "box_max");
  expect_triple(t.e0, 0, 2, 0, "e0");
  expect_triple(t.e1, -4, -2, 0, "e1");
  expect_triple(t.e2, 4, 0, 0, "e2");
  expect_triple(t.m0, 1, 3, 3, "m0");
  expect_triple(t.m1, -1, 3, 3, "m1");
  expect_triple(t.m2, -1, 2, 3, "m2");
  expect_triple(t.h0, 0, 1, 0, "h0");
  expect_triple(t.h1, 2, 1, 0, "h1");
  expect_triple(t.h2, 2, 0, 0, "h2");
}

const geom::stl_tri_t right_triangle = {{0, 0, 0}, {2, 0, 0}, {0, 4, 0}, {nan, nan, nan}};
const geom::stl_tri_t on_one_line = {{0, 0, 0}, {1, 1, 1}, {2, 2, 2}, {nan, nan, nan}};

TEST(derivative_tris, soup_records_match_hand_computed_values_and_fill_the_soup_normal) {
  geom::Stl3d soup = soup_of({right_triangle});
  const vector_ptr v(derivative_cached_tri3d__new_vector_by_Stl3d(&soup, turn_and_shift.m.data()));
  ASSERT_TRUE(v);
  ASSERT_EQ(v->size(), 1u);
  expect_moved_right_triangle((*v)[0]);
  EXPECT_EQ(soup.stl->tris[0].normal, (std::array<double, 3>{0, 0, 1}));
}

TEST(derivative_tris, welded_mesh_records_match_hand_computed_values) {
  geom::topo_stl3d mesh(right_triangle.a.data(), 1);
  const vector_ptr v(derivative_cached_tri3d__new_vector_by_topo_stl3d(&mesh, 0, turn_and_shift.m.data()));
  ASSERT_TRUE(v);
  ASSERT_EQ(v->size(), 1u);
  expect_moved_right_triangle((*v)[0]);
}

TEST(derivative_tris, a_degenerate_triangle_stays_with_a_nan_normal) {
  geom::Stl3d soup = soup_of({on_one_line, right_triangle});
  const vector_ptr from_soup(derivative_cached_tri3d__new_vector_by_Stl3d(&soup, turn_and_shift.m.data()));
  geom::topo_stl3d mesh(soup.stl->tris.data()->a.data(), 2);
  const vector_ptr from_mesh(derivative_cached_tri3d__new_vector_by_topo_stl3d(&mesh, 0, turn_and_shift.m.data()));
  for (const derivative_cached_tri3d_vector* v : {from_soup.get(), from_mesh.get()}) {
    ASSERT_TRUE(v);
    ASSERT_EQ(v->size(), 2u);
    EXPECT_TRUE(std::isnan((*v)[0].normal[0]) && std::isnan((*v)[0].normal[1]) && std::isnan((*v)[0].normal[2]));
    expect_triple((*v)[0].p2, -1, 4, 5, "the degenerate triangle's corners still move");
    expect_moved_right_triangle((*v)[1]);
  }
}

TEST(derivative_tris, an_empty_mesh_gives_an_empty_vector_and_null_input_gives_null) {
  geom::Stl3d soup = soup_of({});
  geom::topo_stl3d mesh(nullptr, 0);
  const vector_ptr from_soup(derivative_cached_tri3d__new_vector_by_Stl3d(&soup, turn_and_shift.m.data()));
  const vector_ptr from_mesh(derivative_cached_tri3d__new_vector_by_topo_stl3d(&mesh, 0, turn_and_shift.m.data()));
  ASSERT_TRUE(from_soup && from_mesh);
  EXPECT_TRUE(from_soup->empty());
  EXPECT_TRUE(from_mesh->empty());
  EXPECT_EQ(derivative_cached_tri3d__new_vector_by_Stl3d(nullptr, turn_and_shift.m.data()), nullptr);
  EXPECT_EQ(derivative_cached_tri3d__new_vector_by_Stl3d(&soup, nullptr), nullptr);
  EXPECT_EQ(derivative_cached_tri3d__new_vector_by_topo_stl3d(nullptr, 0, turn_and_shift.m.data()), nullptr);
  derivative_cached_tri3d__delete_vector(nullptr);
}

}  // namespace
