#include <algorithm>
#include <cmath>
#include <limits>

#include "cbtr/build/build_cube_tree.h"
#include "cbtr/model/lattice.h"

namespace cbtr {

namespace {

using point = std::array<double, 3>;

struct smallest_t {
  std::array<double, 3> v = {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::infinity()};
  // Zero differences are not features: an edge along an axis has them.
  void take(int axis, double d) {
    d = std::abs(d);
    if (d > 0 && d < v[axis]) v[axis] = d;
  }
};

// The vertex's offset from the line through the edge, per axis.
void take_offset(smallest_t& s, const point& p, const point& a, const point& b) {
  const point dir = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
  const point w = {p[0] - a[0], p[1] - a[1], p[2] - a[2]};
  const double len2 = dir[0] * dir[0] + dir[1] * dir[1] + dir[2] * dir[2];
  if (!(len2 > 0)) return;
  const double t = (w[0] * dir[0] + w[1] * dir[1] + w[2] * dir[2]) / len2;
  for (int k = 0; k < 3; ++k) s.take(k, w[k] - t * dir[k]);
}

}  // namespace

double fraction_resolution(const std::vector<geom::stl_tri_t>& tris, double w) {
  smallest_t edges, offsets;
  for (const geom::stl_tri_t& t : tris) {
    const point* c[3] = {&t.a, &t.b, &t.c};
    for (int i = 0; i < 3; ++i) {
      const point& p = *c[i];
      const point& q = *c[(i + 1) % 3];
      if (p != q)
        for (int k = 0; k < 3; ++k) edges.take(k, q[k] - p[k]);
      take_offset(offsets, *c[(i + 2) % 3], p, q);
    }
  }
  double m = std::numeric_limits<double>::infinity();
  for (int k = 0; k < 3; ++k) m = std::min({m, edges.v[k], offsets.v[k]});
  return std::clamp(m, lattice_step, std::max(w, lattice_step)) * 0.001;
}

}  // namespace cbtr
