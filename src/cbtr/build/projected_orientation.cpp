#include "cbtr/build/projected_orientation.h"

#include <cmath>
#include <limits>

#include "cbtr/model/lattice_exact.h"

namespace cbtr {

namespace {

// Doubles converted from fractions are off by about one unit in the last
// place; the filter allows several times that.
constexpr double tolerance = 32 * std::numeric_limits<double>::epsilon();

}  // namespace

fr grid_line_t::uf() const { return lattice_fraction(u); }
fr grid_line_t::vf() const { return lattice_fraction(v); }

namespace {

// The orientation as far as doubles prove it; 0 where they can't tell.
int filtered_orient(const tri_extension_t& t, int k, int a1, int a2, double u, double v) {
  const vec3d& p = t.corner_d[k];
  const vec3d& q = t.corner_d[k == 2 ? 0 : k + 1];
  const double x0 = component(p, a1), y0 = component(p, a2);
  const double x1 = component(q, a1), y1 = component(q, a2);
  const double det = (x1 - x0) * (v - y0) - (y1 - y0) * (u - x0);
  const double mag = (std::abs(x1) + std::abs(x0)) * (std::abs(v) + std::abs(y0)) +
                     (std::abs(y1) + std::abs(y0)) * (std::abs(u) + std::abs(x0));
  if (std::abs(det) > tolerance * mag) return (det > 0) - (det < 0);
  return 0;
}

}  // namespace

int projected_orient(const tri_extension_t& t, int k, const grid_line_t& l) {
  if (const int sign = filtered_orient(t, k, l.a1, l.a2, l.u, l.v)) return sign;
  const vec3fr& P = t.corner(k);
  const vec3fr& Q = t.corner((k + 1) % 3);
  const fr exact = (component(Q, l.a1) - component(P, l.a1)) * (l.vf() - component(P, l.a2)) -
                   (component(Q, l.a2) - component(P, l.a2)) * (l.uf() - component(P, l.a1));
  return exact.sign();
}

bool certainly_misses(const tri_extension_t& t, int axis, double u, double v) {
  const int n_sign = t.normal_sign[axis];
  if (n_sign == 0) return false;
  const int a1 = axis_after(axis), a2 = axis_before(axis);
  for (int k = 0; k < 3; ++k)
    if (filtered_orient(t, k, a1, a2, u, v) * n_sign < 0) return true;
  return false;
}

}  // namespace cbtr
