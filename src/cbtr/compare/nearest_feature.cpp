#include "cbtr/compare/nearest_feature.h"

#include "geom/big_int.h"

namespace cbtr {

namespace {

using i128 = __int128;

lattice_point_t minus(const lattice_point_t& a, const lattice_point_t& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

// Components below 2^28 give products below 2^58: plain 64-bit sums.
std::int64_t dot(const lattice_point_t& a, const lattice_point_t& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

i128 wide_dot(const lattice_point_t& a, const lattice_point_t& b) {
  return static_cast<i128>(a[0]) * b[0] + static_cast<i128>(a[1]) * b[1] + static_cast<i128>(a[2]) * b[2];
}

feature_hit_t corner_hit(std::uint32_t tri, int code, const lattice_point_t& w) {
  const i128 d2 = dot(w, w);
  return {tri, code, d2, 1, static_cast<double>(d2)};
}

// w = q - u on the segment u + t d with 0 < t < 1.
feature_hit_t edge_hit(std::uint32_t tri, int code, const lattice_point_t& w, const lattice_point_t& d) {
  const i128 wd = dot(w, d), dd = dot(d, d);
  const i128 num = static_cast<i128>(dot(w, w)) * dd - wd * wd;
  return {tri, code, num, dd, static_cast<double>(num) / static_cast<double>(dd)};
}

geom::big_int_t wide(i128 v) {
  const bool negative = v < 0;
  const auto m = negative ? -static_cast<unsigned __int128>(v) : static_cast<unsigned __int128>(v);
  geom::big_int_t r = static_cast<std::uint64_t>(m >> 64);
  r <<= 64;
  r += static_cast<std::uint64_t>(m);
  return negative ? geom::big_int_t(-r) : r;
}

geom::big_int_t numerator(const feature_hit_t& h) {
  const geom::big_int_t n = wide(h.num);
  return h.code == 0 ? n * n : n;
}

}  // namespace

__int128 plane_side(const lattice_tri_t& t, const lattice_point_t& q) { return wide_dot(t.n, minus(q, t.p[0])); }

// The regions of a triangle by the signs of dot products (Ericson, Real-Time
// Collision Detection, 5.1.5), every test on integers.
feature_hit_t nearest_feature(const design_t& design, std::uint32_t tri, const lattice_point_t& q) {
  const lattice_tri_t& t = design.tris[tri];
  const lattice_point_t ab = minus(t.p[1], t.p[0]), ac = minus(t.p[2], t.p[0]), bc = minus(t.p[2], t.p[1]);
  const lattice_point_t ap = minus(q, t.p[0]), bp = minus(q, t.p[1]), cp = minus(q, t.p[2]);
  const i128 d1 = dot(ab, ap), d2 = dot(ac, ap);
  if (d1 <= 0 && d2 <= 0) return corner_hit(tri, 4, ap);
  const i128 d3 = dot(ab, bp), d4 = dot(ac, bp);
  if (d3 >= 0 && d4 <= d3) return corner_hit(tri, 5, bp);
  if (d1 * d4 - d3 * d2 <= 0 && d1 >= 0 && d3 <= 0) return edge_hit(tri, 1, ap, ab);
  const i128 d5 = dot(ab, cp), d6 = dot(ac, cp);
  if (d6 >= 0 && d5 <= d6) return corner_hit(tri, 6, cp);
  if (d5 * d2 - d1 * d6 <= 0 && d2 >= 0 && d6 <= 0) return edge_hit(tri, 3, cp, minus(t.p[0], t.p[2]));
  if (d3 * d6 - d5 * d4 <= 0 && d4 - d3 >= 0 && d5 - d6 >= 0) return edge_hit(tri, 2, bp, bc);
  const i128 s = plane_side(t, q), nn = wide_dot(t.n, t.n);
  const double sd = static_cast<double>(s);
  return {tri, 0, s, nn, sd * sd / static_cast<double>(nn)};
}

int compare_d2(const feature_hit_t& a, const feature_hit_t& b) {
  const geom::big_int_t l = numerator(a) * wide(b.den), r = numerator(b) * wide(a.den);
  return l < r ? -1 : l > r ? 1 : 0;
}

}  // namespace cbtr
