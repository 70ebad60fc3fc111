#include "cbtr/collision/tri_sat.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace cbtr {

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

using point = std::array<double, 3>;

point corner(const double* tri, int i) { return {tri[3 * i], tri[3 * i + 1], tri[3 * i + 2]}; }

point minus(const point& a, const point& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }

point cross(const point& a, const point& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

constexpr int after(int k) { return k == 2 ? 0 : k + 1; }

// The least and greatest of n . c over the box's corners c, on the axes
// listed with their components.
std::array<double, 2> box_extent(const box6_t& box, const int* axes, const double* comps, int count) {
  double lo = 0, hi = 0;
  for (int i = 0; i < count; ++i) {
    const double c = comps[i];
    const double a = c * box[axes[i]], b = c * box[axes[i] + 3];
    lo += std::min(a, b);
    hi += std::max(a, b);
  }
  return {lo, hi};
}

}  // namespace

bool intervals_apart(double lo1, double hi1, double lo2, double hi2) {
  const double margin = 1e-9 * std::max({std::abs(lo1), std::abs(hi1), std::abs(lo2), std::abs(hi2)});
  return hi1 + margin < lo2 || hi2 + margin < lo1;
}

tri_sat_t make_tri_sat(const double* tri) {
  tri_sat_t s{};
  s.tri = tri;
  const point p[3] = {corner(tri, 0), corner(tri, 1), corner(tri, 2)};
  for (int k = 0; k < 3; ++k) {
    s.box[k] = std::min({p[0][k], p[1][k], p[2][k]});
    s.box[k + 3] = std::max({p[0][k], p[1][k], p[2][k]});
  }
  const point n = cross(minus(p[1], p[0]), minus(p[2], p[0]));
  std::copy(n.begin(), n.end(), s.normal);
  const int zeros = (n[0] == 0) + (n[1] == 0) + (n[2] == 0);
  s.d = zeros >= 2 ? nan : n[0] * p[0][0] + n[1] * p[0][1] + n[2] * p[0][2];
  for (int k = 0; k < 3; ++k) {
    const int u = after(k), v = after(u);
    for (int e = 0; e < 3; ++e) {
      const point edge = minus(p[e == 2 ? 0 : e + 1], p[e]);
      double* axis = s.axis[3 * k + e];
      double* range = s.range[3 * k + e];
      axis[0] = -edge[v];
      axis[1] = edge[u];
      if (axis[0] == 0 || axis[1] == 0 || n[k] == 0) {
        axis[0] = axis[1] = range[0] = range[1] = nan;
        continue;
      }
      range[0] = range[1] = axis[0] * p[0][u] + axis[1] * p[0][v];
      for (int i = 1; i < 3; ++i) {
        const double t = axis[0] * p[i][u] + axis[1] * p[i][v];
        range[0] = std::min(range[0], t);
        range[1] = std::max(range[1], t);
      }
    }
  }
  return s;
}

bool touches_box(const tri_sat_t& sat, const box6_t& box) {
  for (int k = 0; k < 3; ++k)
    if (intervals_apart(sat.box[k], sat.box[k + 3], box[k], box[k + 3])) return false;
  if (!std::isnan(sat.d)) {
    const int axes[3] = {0, 1, 2};
    const auto [lo, hi] = box_extent(box, axes, sat.normal, 3);
    if (intervals_apart(sat.d, sat.d, lo, hi)) return false;
  }
  for (int k = 0; k < 3; ++k) {
    const int axes[2] = {after(k), after(after(k))};
    for (int e = 0; e < 3; ++e) {
      const double* axis = sat.axis[3 * k + e];
      if (std::isnan(axis[0])) continue;
      const auto [lo, hi] = box_extent(box, axes, axis, 2);
      if (intervals_apart(sat.range[3 * k + e][0], sat.range[3 * k + e][1], lo, hi)) return false;
    }
  }
  return true;
}

}  // namespace cbtr
