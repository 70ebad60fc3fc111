#pragma once

// A triangle: corners a, b, c, counter-clockwise seen from outside, then its
// normal, and optionally a second normal of another number type.
//   tri3<vec3d, vec3d>                the soup record: twelve doubles
//   tri3<vec3fr, vec3fr, vec3d>       the exact triangle of exchange: exact
//                                     unnormalised normal, unit double normal

namespace geom {

template <class Point, class Normal, class UnitNormal = void>
struct tri3 {
  Point a;
  Point b;
  Point c;
  Normal normal;
  UnitNormal unit_normal;
};

template <class Point, class Normal>
struct tri3<Point, Normal, void> {
  Point a;
  Point b;
  Point c;
  Normal normal;
};

}  // namespace geom
