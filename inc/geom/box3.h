#pragma once

// An axis-aligned box in doubles, V being vec3<double>. Boxes never decide a
// geometric question, they only prune; a box around exact geometry is
// therefore inflated outward, since converting an exact coordinate to a
// double may round inward.

#include <algorithm>
#include <cmath>
#include <limits>

namespace geom {

template <class V>
struct box3 {
  V min;
  V max;

  // +infinity three times, then -infinity: grows into the first point.
  static box3 empty() {
    constexpr double inf = std::numeric_limits<double>::infinity();
    return {{inf, inf, inf}, {-inf, -inf, -inf}};
  }

  // Only grows; NaN coordinates leave the box as it stands.
  void expand(const V& p) {
    min = {std::min(min.x, p.x), std::min(min.y, p.y), std::min(min.z, p.z)};
    max = {std::max(max.x, p.x), std::max(max.y, p.y), std::max(max.z, p.z)};
  }

  // Each side moved out by |c| * 1e-9 + 1e-12: relative for large
  // coordinates, absolute near the origin, so even a point box has width.
  box3 inflated() const {
    return {{outward(min.x, -1), outward(min.y, -1), outward(min.z, -1)},
            {outward(max.x, 1), outward(max.y, 1), outward(max.z, 1)}};
  }

  // Closed boxes: touching counts.
  bool overlaps(const box3& o) const {
    return min.x <= o.max.x && o.min.x <= max.x && min.y <= o.max.y && o.min.y <= max.y && min.z <= o.max.z &&
           o.min.z <= max.z;
  }

 private:
  static double outward(double c, double direction) { return c + direction * (std::fabs(c) * 1e-9 + 1e-12); }
};

}  // namespace geom
