#include "geom/topo/hull_point_t.h"

#include <cmath>

namespace geom {

namespace {

// Bound on the error of one coordinate of a difference of two converted
// points, per unit of their magnitudes: a converted coordinate is off by a
// few units in the last place, and so is the subtraction.
constexpr double input_error = 1e-15;
// Bound on the rounding of the determinant's own products and sums, per unit
// of its permanent.
constexpr double product_error = 1e-14;

struct diff_t {
  vec3d v;    // the difference as computed
  vec3d err;  // a bound on each coordinate's error
};

diff_t diff(const vec3d& p, const vec3d& q) {
  return {{p.x - q.x, p.y - q.y, p.z - q.z},
          {input_error * (std::fabs(p.x) + std::fabs(q.x)), input_error * (std::fabs(p.y) + std::fabs(q.y)),
           input_error * (std::fabs(p.z) + std::fabs(q.z))}};
}

vec3d abs_of(const vec3d& v) { return {std::fabs(v.x), std::fabs(v.y), std::fabs(v.z)}; }
vec3d widened(const diff_t& d) {
  const vec3d a = abs_of(d.v);
  return {a.x + d.err.x, a.y + d.err.y, a.z + d.err.z};
}

// The determinant's terms taken in absolute value.
double permanent(const vec3d& u, const vec3d& v, const vec3d& w) {
  return (u.y * v.z + u.z * v.y) * w.x + (u.z * v.x + u.x * v.z) * w.y + (u.x * v.y + u.y * v.x) * w.z;
}

// The sign of det[u; v; w] when the doubles prove it, else 2.
int filtered_sign(const diff_t& u, const diff_t& v, const diff_t& w) {
  const double det = (u.v.y * v.v.z - u.v.z * v.v.y) * w.v.x + (u.v.z * v.v.x - u.v.x * v.v.z) * w.v.y +
                     (u.v.x * v.v.y - u.v.y * v.v.x) * w.v.z;
  const double exact_size = permanent(abs_of(u.v), abs_of(v.v), abs_of(w.v));
  const double widened_size = permanent(widened(u), widened(v), widened(w));
  // Multilinear and monotone: the widening's growth bounds what the input
  // errors can do to the determinant, the rest is rounding.
  const double bound = 3 * (widened_size - exact_size) + product_error * widened_size;
  if (det > bound) return 1;
  if (det < -bound) return -1;
  return 2;
}

}  // namespace

int orient3(const hull_point_t& a, const hull_point_t& b, const hull_point_t& c,
            const hull_point_t& p) {
  const int s = filtered_sign(diff(b.approx, a.approx), diff(c.approx, a.approx), diff(p.approx, a.approx));
  if (s != 2) return s;
  return dot(cross(b.pos - a.pos, c.pos - a.pos), p.pos - a.pos).sign();
}

int side(const vec3fr& n, const vec3fr& x, const vec3fr& y, const vec3fr& p) {
  return dot(n, cross(y - x, p - x)).sign();
}

bool collinear(const vec3fr& a, const vec3fr& b, const vec3fr& p) { return is_parallel(b - a, p - a); }

}  // namespace geom
