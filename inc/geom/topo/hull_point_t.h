#pragma once

// Points of a convex hull under construction and the orientation tests the
// wrapping takes its decisions on. Every answer is the exact one: doubles
// only answer where their error bound proves the sign, and the fractions
// decide the rest (coplanar and nearly coplanar points).
//
//   orient3(a, b, c, p)  sign of cross(b - a, c - a) . (p - a): +1 when p lies
//                        on the side the normal of the counter-clockwise
//                        triangle a b c points to (outside), 0 when coplanar
//   side(n, x, y, p)     the same in the plane of normal n: +1 when p lies
//                        left of x -> y seen from the tip of n

#include <cmath>

#include "geom/fraction_geom_util"

namespace geom {

struct hull_point_t {
  vec3fr pos;
  vec3d approx;     // pos in doubles, for the filter
  vec3d magnitude;  // |approx| per coordinate, which the filter's error grows with

  explicit hull_point_t(vec3fr p)
      : pos(std::move(p)),
        approx(to_vec3d(pos)),
        magnitude{std::fabs(approx.x), std::fabs(approx.y), std::fabs(approx.z)} {}
};

int orient3(const hull_point_t& a, const hull_point_t& b, const hull_point_t& c, const hull_point_t& p);

// The plane's share of an orientation filter over a b c: cross(b - a, c - a)
// in doubles, and its terms in absolute value per coordinate of p - a,
// without and with the input errors of b - a and c - a.
struct plane_terms_t {
  vec3d normal, size, wide_size;
};

// orient3 of many points against one plane a b c: the wrapping tests every
// point in the search against the face it turns, so the plane's share of the
// filter is worked out once. The same answers as orient3.
class plane_orient_t {
 public:
  plane_orient_t(const hull_point_t& a, const hull_point_t& b, const hull_point_t& c);
  int operator()(const hull_point_t& p) const;
  // Whether doubles prove every point whose doubles lie in the box lo..hi
  // strictly behind the plane, as operator() would find each of them.
  bool surely_behind(const vec3d& lo, const vec3d& hi) const;

 private:
  const hull_point_t* _a;
  const hull_point_t* _b;
  const hull_point_t* _c;
  plane_terms_t _terms;
};

// A face's normal, with its doubles for the filter of side().
struct face_normal_t {
  vec3fr exact;
  vec3d approx;

  explicit face_normal_t(vec3fr n) : exact(std::move(n)), approx(to_vec3d(exact)) {}
};

int side(const face_normal_t& n, const hull_point_t& x, const hull_point_t& y, const hull_point_t& p);

// Exact; doubles first prove the points apart where they can.
bool collinear(const hull_point_t& a, const hull_point_t& b, const hull_point_t& p);

}  // namespace geom
