// Exact vectors: reduced directions, the hash rules that let equal values
// meet in one bucket, plane orientation, segment distance and inflated boxes.

#include "geom/fraction_geom_util"

#include <gtest/gtest.h>

#include <unordered_set>

namespace {

using geom::fr;
using geom::vec2fr;
using geom::vec3d;
using geom::vec3fr;

vec3fr v3(fr x, fr y, fr z) { return {std::move(x), std::move(y), std::move(z)}; }
vec2fr v2(fr x, fr y) { return {std::move(x), std::move(y)}; }

void expect_integers(const vec3fr& v, long long x, long long y, long long z) {
  EXPECT_EQ(v.x.num, x);
  EXPECT_EQ(v.y.num, y);
  EXPECT_EQ(v.z.num, z);
  for (const fr* c : {&v.x, &v.y, &v.z}) {
    EXPECT_EQ(c->den, 1);
    EXPECT_TRUE(c->is_packed());
  }
}

TEST(reduced_integer_vec, directions_become_coprime_integers_of_the_same_sense) {
  expect_integers(get_reduced_integer_vec(v3(fr(1, 2), fr(1, 3), fr(0))), 3, 2, 0);
  expect_integers(get_reduced_integer_vec(v3(fr(-4), fr(6), fr(0))), -2, 3, 0);
  expect_integers(get_reduced_integer_vec(v3(fr(0), fr(0), fr(5, 7))), 0, 0, 1);
  expect_integers(get_reduced_integer_vec(v3(fr(-6, 4), fr(9, -6), fr(3, 8))), -4, -4, 1);
}

TEST(reduced_integer_vec, parallel_edges_of_any_length_reduce_alike) {
  const vec3fr a = v3(fr(2, 3), fr(-4, 5), fr(6, 7));
  const vec3fr b = a * fr(35, 11);
  vec3fr ra = get_reduced_integer_vec(a);
  vec3fr rb = get_reduced_integer_vec(b);
  EXPECT_TRUE(ra == rb);
  EXPECT_EQ(hash(ra), hash(rb));
}

TEST(reduced_integer_vec_death, zero_vector_has_no_direction) {
  const vec3fr zero = v3(fr::zero(), fr(0, 5), fr(0));
  EXPECT_DEATH(get_reduced_integer_vec(zero),
               "Program abort: get_reduced_integer_vec: zero vector has no direction\n"
               "At geom::get_reduced_integer_vec\n"
               "Detail: at line [0-9]+ , in file export_inc/geom/fraction_geom_util");
}

TEST(fraction_hash, equal_values_hash_alike_and_signs_apart) {
  fr half(1, 2);
  fr two_quarters(2, 4);
  fr minus_over_minus(-1, -2);
  minus_over_minus.pack();
  fr minus_half(-1, 2);
  EXPECT_EQ(hash(half), hash(two_quarters));
  EXPECT_EQ(hash(half), hash(minus_over_minus));
  EXPECT_NE(hash(half), hash(minus_half));
  EXPECT_TRUE(two_quarters.is_packed());
  EXPECT_EQ(two_quarters.num, 1);
}

TEST(fraction_hash, vectors_hash_by_their_packed_coordinates) {
  vec3fr a = v3(fr(1, 2), fr(3), fr(-5, 7));
  vec3fr b = v3(fr(2, 4), fr(6, 2), fr(10, -14));
  b.z.pack();
  EXPECT_EQ(hash(a), hash(b));
  vec3fr swapped = v3(fr(3), fr(1, 2), fr(-5, 7));
  EXPECT_NE(hash(a), hash(swapped));
  vec2fr p = v2(fr(1, 3), fr(2));
  vec2fr q = v2(fr(3, 9), fr(4, 2));
  EXPECT_EQ(hash(p), hash(q));
  EXPECT_TRUE(p == q);
}

TEST(exact_vec3, products_and_parallel_test) {
  const vec3fr a = v3(fr(1), fr(2), fr(3));
  const vec3fr b = v3(fr(-2), fr(1, 2), fr(0));
  EXPECT_TRUE(eq(dot(a, b), fr(-1)));
  const vec3fr c = cross(a, b);
  EXPECT_TRUE(dot(c, a).is_zero());
  EXPECT_TRUE(dot(c, b).is_zero());
  EXPECT_TRUE(c == v3(fr(-3, 2), fr(-6), fr(9, 2)));
  EXPECT_TRUE(is_parallel(a, -a));
  EXPECT_TRUE(is_parallel(a, a * fr(2, 7)));
  EXPECT_FALSE(is_parallel(a, b));
  EXPECT_TRUE(is_parallel(a, v3(fr(0), fr(0), fr(0))));
  EXPECT_TRUE(a + b - b == a);
}

TEST(exact_vec3, conversion_to_doubles_packs_the_source) {
  vec3fr a = v3(fr(2, 4), fr(-9, 3), fr(1, 8));
  const vec3d d = to_vec3d(a);
  EXPECT_EQ(d.x, 0.5);
  EXPECT_EQ(d.y, -3.0);
  EXPECT_EQ(d.z, 0.125);
  EXPECT_EQ(a.x.den, 2);
  EXPECT_TRUE(a.y.is_evaluated());
}

TEST(plane_orientation, left_of_a_directed_line_is_positive) {
  const vec2fr a = v2(fr(0), fr(0));
  const vec2fr b = v2(fr(4), fr(0));
  EXPECT_EQ(sign_of(v2(fr(1), fr(1, 1000)), a, b), 1);
  EXPECT_EQ(sign_of(v2(fr(1), fr(-1, 1000)), a, b), -1);
  EXPECT_EQ(sign_of(v2(fr(9), fr(0)), a, b), 0);
  const vec2fr c = v2(fr(0), fr(4));
  EXPECT_EQ(cross(b - a, c - b).sign(), 1);  // a, b, c turn left
}

TEST(segment_distance, squared_distance_to_the_nearest_point) {
  const vec2fr a = v2(fr(0), fr(0));
  const vec2fr b = v2(fr(4), fr(0));
  EXPECT_TRUE(eq(dist2_to_segment(a, b, v2(fr(-1), fr(1))), fr(2)));
  EXPECT_TRUE(eq(dist2_to_segment(a, b, v2(fr(6), fr(0))), fr(4)));
  EXPECT_TRUE(eq(dist2_to_segment(a, b, v2(fr(3, 2), fr(-1, 3))), fr(1, 9)));
  EXPECT_TRUE(dist2_to_segment(a, b, v2(fr(7, 3), fr(0))).is_zero());
  const vec2fr slanted = v2(fr(3), fr(3));
  EXPECT_TRUE(dist2_to_segment(a, slanted, v2(fr(1, 7), fr(1, 7))).is_zero());
  EXPECT_FALSE(dist2_to_segment(a, slanted, v2(fr(1, 7), fr(2, 13))).is_zero());
  EXPECT_TRUE(dist2_to_segment(b, b, b).is_zero());
}

TEST(inflated_box, boxes_around_exact_corners_grow_outward) {
  geom::tri3<vec3fr, vec3fr, vec3d> at_origin{
      v3(fr(0), fr(0), fr(0)), v3(fr(0), fr(0), fr(0)), v3(fr(0), fr(0), fr(0)), {}, {}};
  const geom::box3<vec3d> point = inflated_box(at_origin);
  EXPECT_DOUBLE_EQ(point.max.x - point.min.x, 2e-12);
  EXPECT_DOUBLE_EQ(point.max.z - point.min.z, 2e-12);
  geom::tri3<vec3fr, vec3fr> far{
      v3(fr(1000), fr(-1, 3), fr(0)), v3(fr(-1000), fr(1, 3), fr(2)), v3(fr(1), fr(0), fr(1)), {}};
  const geom::box3<vec3d> box = inflated_box(far);
  EXPECT_DOUBLE_EQ(box.max.x, 1000 + 1000 * 1e-9 + 1e-12);
  EXPECT_DOUBLE_EQ(box.min.x, -1000 - 1000 * 1e-9 - 1e-12);
  EXPECT_LT(box.min.y, -1.0 / 3);
  EXPECT_GT(box.max.y, 1.0 / 3);
  EXPECT_TRUE(box.overlaps(point));
  geom::box3<vec3d> away = geom::box3<vec3d>::empty();
  away.expand({5000, 0, 0});
  EXPECT_FALSE(box.overlaps(away));
}

}  // namespace
