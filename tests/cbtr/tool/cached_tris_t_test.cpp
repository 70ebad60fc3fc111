#include "cbtr/tool/cached_tris_t.h"

#include <gtest/gtest.h>

#include "tool_volume_checks.h"

namespace {

using geom::fr;
using quvra_test::exact_point;

cbtr::tool_tri_t tri(const geom::vec3fr& a, const geom::vec3fr& b, const geom::vec3fr& c) {
  return cbtr::make_tool_tri(a, b, c, cbtr::reduced_cross(a, b, c));
}

TEST(cached_tris_t, drops_triangles_with_a_zero_normal_and_keeps_the_order_of_the_rest) {
  cbtr::tool_tris_t in = {
      tri(exact_point(0, 0, 0), exact_point(1, 0, 0), exact_point(0, 1, 0)),
      tri(exact_point(0, 0, 0), exact_point(1, 1, 1), exact_point(2, 2, 2)),
      tri(exact_point(0, 0, 5), exact_point(0, 2, 5), exact_point(3, 0, 5)),
  };
  const cbtr::cached_tris_t volume(std::move(in));
  EXPECT_TRUE(in.empty());
  EXPECT_EQ(in.capacity(), 0u);
  ASSERT_EQ(volume.size(), 2u);
  EXPECT_TRUE(eq(volume.tris()[0].corner(1).x, fr(1)));
  EXPECT_TRUE(eq(volume.tris()[1].corner(2).x, fr(3)));
}

TEST(cached_tris_t, records_keep_the_given_normal_and_its_plane) {
  // A sweep hands over a normal of the right direction and any length; the
  // record keeps it rather than computing the cross product again.
  cbtr::tool_tris_t in = {
      cbtr::make_tool_tri(exact_point(1, 0, 2), exact_point(3, 0, 2), exact_point(1, 4, 2), exact_point(0, 0, 1))};
  const cbtr::cached_tris_t volume(std::move(in));
  ASSERT_EQ(volume.size(), 1u);
  const cbtr::tri_extension_t& t = volume.tris()[0];
  EXPECT_TRUE(t.tri.normal.x.is_zero() && t.tri.normal.y.is_zero());
  EXPECT_TRUE(eq(t.tri.normal.z, fr(1)));
  EXPECT_TRUE(eq(t.plane_d, fr(2)));
  EXPECT_EQ(t.plane_dd, 2.0);
  EXPECT_EQ(t.normal_sign, (std::array<int, 3>{0, 0, 1}));
  EXPECT_EQ(t.lo.x, 1.0);
  EXPECT_EQ(t.hi.y, 4.0);
  EXPECT_EQ(t.tri.unit_normal.z, 1.0);
}

}  // namespace
