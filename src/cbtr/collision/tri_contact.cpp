#include "cbtr/collision/tri_contact.h"

#include <algorithm>

#include "cbtr/collision/tri_sat.h"

namespace cbtr {

namespace {

using point = std::array<double, 3>;

point minus(const point& a, const point& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }

point cross(const point& a, const point& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double dot(const point& a, const point& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

bool apart_on(const point& axis, const corners3_t& a, const corners3_t& b) {
  const double a0 = dot(axis, a[0]), a1 = dot(axis, a[1]), a2 = dot(axis, a[2]);
  const double b0 = dot(axis, b[0]), b1 = dot(axis, b[1]), b2 = dot(axis, b[2]);
  return intervals_apart(std::min({a0, a1, a2}), std::max({a0, a1, a2}), std::min({b0, b1, b2}),
                         std::max({b0, b1, b2}));
}

std::array<point, 3> edges(const corners3_t& t) { return {minus(t[1], t[0]), minus(t[2], t[1]), minus(t[0], t[2])}; }

}  // namespace

bool triangles_touch(const corners3_t& a, const corners3_t& b) {
  for (int k = 0; k < 3; ++k)
    if (intervals_apart(std::min({a[0][k], a[1][k], a[2][k]}), std::max({a[0][k], a[1][k], a[2][k]}),
                        std::min({b[0][k], b[1][k], b[2][k]}), std::max({b[0][k], b[1][k], b[2][k]})))
      return false;
  const std::array<point, 3> ea = edges(a), eb = edges(b);
  const point na = cross(ea[0], ea[1]), nb = cross(eb[0], eb[1]);
  if (apart_on(na, a, b) || apart_on(nb, a, b)) return false;
  for (const point& u : ea)
    for (const point& v : eb)
      if (apart_on(cross(u, v), a, b)) return false;
  for (int i = 0; i < 3; ++i)
    if (apart_on(cross(na, ea[i]), a, b) || apart_on(cross(nb, eb[i]), a, b)) return false;
  return true;
}

}  // namespace cbtr
