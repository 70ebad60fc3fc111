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

diff_t diff(const hull_point_t& p, const hull_point_t& q) {
  return {{p.approx.x - q.approx.x, p.approx.y - q.approx.y, p.approx.z - q.approx.z},
          {input_error * (p.magnitude.x + q.magnitude.x), input_error * (p.magnitude.y + q.magnitude.y),
           input_error * (p.magnitude.z + q.magnitude.z)}};
}

vec3d abs_of(const vec3d& v) { return {std::fabs(v.x), std::fabs(v.y), std::fabs(v.z)}; }
vec3d widened(const diff_t& d) {
  const vec3d a = abs_of(d.v);
  return {a.x + d.err.x, a.y + d.err.y, a.z + d.err.z};
}

// The determinant's terms taken in absolute value, as a vector to dot with
// the third row.
vec3d permanent_row(const vec3d& u, const vec3d& v) {
  return {u.y * v.z + u.z * v.y, u.z * v.x + u.x * v.z, u.x * v.y + u.y * v.x};
}

double dot_of(const vec3d& a, const vec3d& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

// Whether the doubles prove the sign of det, given the determinant's terms
// in absolute value with and without the input errors: the sign, else 2.
// The determinant is multilinear and monotone, so the widening's growth
// bounds what the input errors can do to it; the rest is rounding.
inline int proven_sign(double det, double exact_size, double widened_size) {
  const double bound = 3 * (widened_size - exact_size) + product_error * widened_size;
  if (det > bound) return 1;
  if (det < -bound) return -1;
  return 2;
}

plane_terms_t plane_terms(const diff_t& u, const diff_t& v) {
  return {{u.v.y * v.v.z - u.v.z * v.v.y, u.v.z * v.v.x - u.v.x * v.v.z, u.v.x * v.v.y - u.v.y * v.v.x},
          permanent_row(abs_of(u.v), abs_of(v.v)),
          permanent_row(widened(u), widened(v))};
}

// The sign of det[u; v; w], for the plane's terms of u and v, when the
// doubles prove it, else 2.
inline int filtered_sign(const plane_terms_t& t, const diff_t& w) {
  return proven_sign(dot_of(t.normal, w.v), dot_of(t.size, abs_of(w.v)), dot_of(t.wide_size, widened(w)));
}

}  // namespace

plane_orient_t::plane_orient_t(const hull_point_t& a, const hull_point_t& b, const hull_point_t& c)
    : _a(&a), _b(&b), _c(&c), _terms(plane_terms(diff(b, a), diff(c, a))) {}

int plane_orient_t::operator()(const hull_point_t& p) const {
  const int s = filtered_sign(_terms, diff(p, *_a));
  if (s != 2) return s;
  return dot(cross(_b->pos - _a->pos, _c->pos - _a->pos), p.pos - _a->pos).sign();
}

bool plane_orient_t::surely_behind(const vec3d& lo, const vec3d& hi) const {
  // The determinant is linear in p - a, and each bound of operator() grows
  // with |p - a| and |p|: their largest values over the box bound them all.
  const vec3d& a = _a->approx;
  const double a_k[3] = {a.x, a.y, a.z}, a_mag[3] = {_a->magnitude.x, _a->magnitude.y, _a->magnitude.z};
  const vec3d &n = _terms.normal, &size = _terms.size, &wide = _terms.wide_size;
  const double n_k[3] = {n.x, n.y, n.z};
  const double size_k[3] = {size.x, size.y, size.z}, wide_k[3] = {wide.x, wide.y, wide.z};
  const double lo_k[3] = {lo.x, lo.y, lo.z}, hi_k[3] = {hi.x, hi.y, hi.z};
  double most = 0, growth = 0, widened_size = 0, terms = 0;
  for (int k = 0; k < 3; ++k) {
    const double l = lo_k[k] - a_k[k], h = hi_k[k] - a_k[k];
    const double w = std::max(std::fabs(l), std::fabs(h));
    const double input = input_error * (std::max(std::fabs(lo_k[k]), std::fabs(hi_k[k])) + a_mag[k]);
    most += std::max(n_k[k] * l, n_k[k] * h);
    // widened - exact, termwise: (wide - size) |w| + wide * input.
    growth += (wide_k[k] - size_k[k]) * w + wide_k[k] * input;
    widened_size += wide_k[k] * (w + input);
    terms += std::fabs(n_k[k]) * w;
  }
  return most + 3 * growth + product_error * widened_size + 2 * product_error * terms < 0;
}

int orient3(const hull_point_t& a, const hull_point_t& b, const hull_point_t& c, const hull_point_t& p) {
  return plane_orient_t(a, b, c)(p);
}

int side(const face_normal_t& n, const hull_point_t& x, const hull_point_t& y, const hull_point_t& p) {
  // det[y - x; p - x; n]; the normal's doubles are off by its conversion.
  const diff_t normal = {
      n.approx,
      {input_error * std::fabs(n.approx.x), input_error * std::fabs(n.approx.y), input_error * std::fabs(n.approx.z)}};
  const int s = filtered_sign(plane_terms(diff(y, x), diff(p, x)), normal);
  if (s != 2) return s;
  return dot(n.exact, cross(y.pos - x.pos, p.pos - x.pos)).sign();
}

namespace {

// Whether one coordinate u1 v2 - u2 v1 of a cross product of differences is
// surely not zero: the widened terms bound what input errors and rounding
// can do to it.
bool surely_nonzero(double u1, double e1, double v2, double f2, double u2, double e2, double v1, double f1) {
  const double value = u1 * v2 - u2 * v1;
  const double a = std::fabs(u1) * std::fabs(v2), b = std::fabs(u2) * std::fabs(v1);
  const double wide_a = (std::fabs(u1) + e1) * (std::fabs(v2) + f2),
               wide_b = (std::fabs(u2) + e2) * (std::fabs(v1) + f1);
  return std::fabs(value) > (wide_a - a) + (wide_b - b) + product_error * (wide_a + wide_b);
}

}  // namespace

bool collinear(const hull_point_t& a, const hull_point_t& b, const hull_point_t& p) {
  const diff_t u = diff(b, a), v = diff(p, a);
  if (surely_nonzero(u.v.y, u.err.y, v.v.z, v.err.z, u.v.z, u.err.z, v.v.y, v.err.y) ||
      surely_nonzero(u.v.z, u.err.z, v.v.x, v.err.x, u.v.x, u.err.x, v.v.z, v.err.z) ||
      surely_nonzero(u.v.x, u.err.x, v.v.y, v.err.y, u.v.y, u.err.y, v.v.x, v.err.x))
    return false;
  return is_parallel(b.pos - a.pos, p.pos - a.pos);
}

}  // namespace geom
