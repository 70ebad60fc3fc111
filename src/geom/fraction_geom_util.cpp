#include "geom/fraction_geom_util"

#include <functional>

namespace geom {

namespace {

std::size_t fold(std::size_t h) { return (h >> 32) ^ h; }

}  // namespace

bool is_parallel(const vec3fr& a, const vec3fr& b) {
  return (a.y * b.z - a.z * b.y).is_zero() && (a.z * b.x - a.x * b.z).is_zero() && (a.x * b.y - a.y * b.x).is_zero();
}

vec3d to_vec3d(vec3fr& v) { return {v.x.value(), v.y.value(), v.z.value()}; }

std::size_t hash(fr& f) {
  f.pack();
  // pack leaves a negative denominator alone when the gcd is 1 (-1/-2), and
  // equal values must still meet: hash the value with den made positive.
  if (f.den.sign() < 0) {
    fr turned = make_fraction(-f.num, -f.den);
    return hash(turned);
  }
  const std::hash<big_int_t> int_hash;
  const std::size_t seed = fold(int_hash(f.den)) * 37 + 1369;
  std::size_t g = int_hash(f.num);
  // x and -x must fall apart even if the integer hash ignored the sign.
  if (f.num.sign() < 0) {
    std::size_t combined = int_hash(big_int_t(47));
    boost::hash_combine(combined, g);
    g = combined;
  }
  return fold(g) + seed;
}

std::size_t hash(vec3fr& v) {
  const std::size_t hx = hash(v.x);
  const std::size_t hy = hash(v.y);
  const std::size_t hz = hash(v.z);
  return ((hz ^ hy) * 2) ^ hx;
}

std::size_t hash(vec2fr& v) {
  const std::size_t hx = hash(v.x);
  const std::size_t hy = hash(v.y);
  return (hy * 2) ^ hx;
}

int sign_of(const vec2fr& p, const vec2fr& a, const vec2fr& b) { return cross(p - b, a - b).sign(); }

fr dist2_to_segment(const vec2fr& a, const vec2fr& b, const vec2fr& p) {
  const vec2fr d = b - a;
  const vec2fr w = p - a;
  const fr t = dot(w, d);
  if (lt_int(t, 0)) return dot(w, w);
  const fr dd = dot(d, d);
  // A segment of one point would divide 0 by 0 below; its distance is that
  // of the point.
  if (dd.is_zero()) return dot(w, w);
  if (lt(dd, t)) {
    const vec2fr e = p - b;
    return dot(e, e);
  }
  const vec2fr e = p - (a + d * (t / dd));
  return dot(e, e);
}

}  // namespace geom
