#pragma once

// Six doubles: minimum x, y, z, then maximum x, y, z. The empty box is
// +infinity three times, then -infinity three times, so that growing it by
// any point gives that point. Growing uses strict comparisons, so a NaN
// coordinate changes nothing.

#include <array>
#include <limits>

#include "geom/mat4d.h"
#include "geom/vec3.h"

namespace geom {

struct box3d {
  static constexpr double inf = std::numeric_limits<double>::infinity();
  std::array<double, 6> v = {inf, inf, inf, -inf, -inf, -inf};

  void expand(const vec3d& p) {
    const double c[3] = {p.x, p.y, p.z};
    for (int k = 0; k < 3; ++k) {
      if (v[k] > c[k]) v[k] = c[k];
      if (c[k] > v[k + 3]) v[k + 3] = c[k];
    }
  }
  void expand(const box3d& b) {
    if (b.is_empty()) return;
    expand(vec3d{b.v[0], b.v[1], b.v[2]});
    expand(vec3d{b.v[3], b.v[4], b.v[5]});
  }
  bool is_empty() const { return !(v[0] <= v[3]); }
};
static_assert(sizeof(box3d) == 6 * sizeof(double), "boxes cross the boundary as doubles");

// The box around b's eight corners moved by m; empty for an empty b.
box3d moved_box(const box3d& b, const mat4d& m);

}  // namespace geom
