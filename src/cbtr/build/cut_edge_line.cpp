#include "cbtr/build/cut_edge_line.h"

#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "cbtr/build/projected_orientation.h"
#include "cbtr/model/lattice_exact.h"

// The line runs along axis a; (u, v) is its place on axes a1 = a + 1 and
// a2 = a + 2. Projected along a, the triangle is counter-clockwise exactly
// when its normal points along +a, since (a1, a2, a) is a right-handed frame.

namespace cbtr {

namespace {

// Doubles converted from fractions are off by about one unit in the last
// place; every filter below allows several times that.
constexpr double tolerance = 32 * std::numeric_limits<double>::epsilon();

int sign_of(double x) { return (x > 0) - (x < 0); }

// A crossing estimated in doubles, exact where the estimate could be on the
// wrong side of a lattice value.
template <class Exact>
double settle(double estimate, double bound, Exact exact) {
  if (std::isfinite(estimate) && clear_of_lattice(estimate, bound)) return estimate;
  return lattice_safe_double(exact());
}

double interior_crossing(const tri_extension_t& t, const grid_line_t& l) {
  // A plane across the axis crosses every such line at its own coordinate,
  // exactly: faces parallel to cell faces are reproduced to the last bit.
  if (t.normal_sign[l.a1] == 0 && t.normal_sign[l.a2] == 0) return lattice_safe_double(component(t.tri.a, l.a));
  const double n = component(t.normal_d, l.a);
  const double n1u = component(t.normal_d, l.a1) * l.u;
  const double n2v = component(t.normal_d, l.a2) * l.v;
  const double estimate = (t.plane_dd - n1u - n2v) / n;
  const double bound = tolerance * (std::abs(t.plane_dd) + std::abs(n1u) + std::abs(n2v)) / std::abs(n);
  return settle(estimate, bound, [&] {
    return (t.plane_d - component(t.tri.normal, l.a1) * l.uf() - component(t.tri.normal, l.a2) * l.vf()) /
           component(t.tri.normal, l.a);
  });
}

double edge_crossing(const tri_extension_t& t, int k, const grid_line_t& l) {
  const vec3d& p = t.corner_d[k];
  const vec3d& q = t.corner_d[(k + 1) % 3];
  // Interpolate along the longer projected extent of the edge.
  const bool on_a1 =
      std::abs(component(q, l.a1) - component(p, l.a1)) >= std::abs(component(q, l.a2) - component(p, l.a2));
  const int c = on_a1 ? l.a1 : l.a2;
  const double qc = on_a1 ? l.u : l.v;
  const double pc = component(p, c), dc = component(q, c) - pc;
  const double pa = component(p, l.a), da = component(q, l.a) - pa;
  const double s = (qc - pc) / dc;
  const double estimate = pa + s * da;
  const double bound = tolerance * (std::abs(pa) + std::abs(component(q, l.a))) *
                       (1 + (std::abs(qc) + std::abs(pc) + std::abs(component(q, c))) / std::abs(dc));
  return settle(estimate, bound, [&] {
    const vec3fr& P = t.corner(k);
    const vec3fr& Q = t.corner((k + 1) % 3);
    const fr sf = ((on_a1 ? l.uf() : l.vf()) - component(P, c)) / (component(Q, c) - component(P, c));
    return component(P, l.a) + sf * (component(Q, l.a) - component(P, l.a));
  });
}

double vertex_crossing(const tri_extension_t& t, int k, const grid_line_t& l) {
  return lattice_safe_double(component(t.corner(k), l.a));
}

edge_hit_t piercing_hit(const tri_extension_t& t, const grid_line_t& l) {
  const int n_sign = t.normal_sign[l.a];
  int zeros = 0, first_zero = -1, second_zero = -1;
  for (int k = 0; k < 3; ++k) {
    const int o = projected_orient(t, k, l) * n_sign;
    if (o < 0) return {edge_hit_t::miss | edge_hit_t::crossing};
    if (o == 0) (zeros++ == 0 ? first_zero : second_zero) = k;
  }
  edge_hit_t hit;
  if (zeros == 0) {
    hit.flags = edge_hit_t::crossing | edge_hit_t::interior;
    hit.t0 = interior_crossing(t, l);
  } else if (zeros == 1) {
    hit.flags = edge_hit_t::crossing | (0x002u << first_zero);
    hit.t0 = edge_crossing(t, first_zero, l);
  } else {
    // Edges k and k + 1 meet at corner k + 1.
    const int corner = (first_zero + 1) % 3 == second_zero ? second_zero : first_zero;
    hit.flags = edge_hit_t::crossing | (0x010u << corner);
    hit.t0 = vertex_crossing(t, corner, l);
  }
  hit.t1 = 0;
  return hit;
}

// Sign of the plane's equation on the line, for a triangle parallel to it.
int plane_side(const tri_extension_t& t, const grid_line_t& l) {
  const double n1u = component(t.normal_d, l.a1) * l.u;
  const double n2v = component(t.normal_d, l.a2) * l.v;
  const double value = n1u + n2v - t.plane_dd;
  if (std::abs(value) > tolerance * (std::abs(n1u) + std::abs(n2v) + std::abs(t.plane_dd))) return sign_of(value);
  return (component(t.tri.normal, l.a1) * l.uf() + component(t.tri.normal, l.a2) * l.vf() - t.plane_d).sign();
}

// Offset of corner k from the line within the triangle's plane, on the axis
// across the line along which the plane is not vertical.
fr offset(const tri_extension_t& t, int k, const grid_line_t& l) {
  return t.normal_sign[l.a1] != 0 ? component(t.corner(k), l.a2) - l.vf() : component(t.corner(k), l.a1) - l.uf();
}

// The overlap of a line lying in the triangle's plane, in doubles: only the
// order of its ends against lattice values is ever read, so an estimate
// serves whenever no corner lies near the line and no end near a lattice
// value. Nothing where the exact path must decide.
std::optional<edge_hit_t> estimated_overlap(const tri_extension_t& t, const grid_line_t& l) {
  const int across = t.normal_sign[l.a1] != 0 ? l.a2 : l.a1;
  const double at = across == l.a2 ? l.v : l.u;
  std::array<double, 3> off, off_error;
  for (int k = 0; k < 3; ++k) {
    const double c = component(t.corner_d[k], across);
    off[k] = c - at;
    off_error[k] = tolerance * (std::abs(c) + std::abs(at));
    if (std::abs(off[k]) <= off_error[k]) return std::nullopt;
  }
  edge_hit_t hit{edge_hit_t::in_plane};
  double lo = std::numeric_limits<double>::infinity(), hi = -lo;
  for (int k = 0; k < 3; ++k) {
    const int next = (k + 1) % 3;
    if ((off[k] < 0) == (off[next] < 0)) continue;
    const double pa = component(t.corner_d[k], l.a), pb = component(t.corner_d[next], l.a);
    const double gap = off[k] - off[next];
    const double x = pa + (pb - pa) * (off[k] / gap);
    const double bound = std::abs(pb - pa) * (2 * (off_error[k] + off_error[next]) / std::abs(gap) + tolerance) +
                         tolerance * (std::abs(pa) + std::abs(pb));
    if (!clear_of_lattice(x, bound)) return std::nullopt;
    lo = std::min(lo, x);
    hi = std::max(hi, x);
    hit.flags |= 0x002u << k;
  }
  if (hit.flags == edge_hit_t::in_plane) return edge_hit_t{edge_hit_t::in_plane | edge_hit_t::miss};
  hit.t0 = lo;
  hit.t1 = hi;
  return hit;
}

edge_hit_t overlap_hit(const tri_extension_t& t, const grid_line_t& l) {
  if (const std::optional<edge_hit_t> estimate = estimated_overlap(t, l)) return *estimate;
  std::array<fr, 3> off = {offset(t, 0, l), offset(t, 1, l), offset(t, 2, l)};
  std::vector<fr> along;
  edge_hit_t hit{edge_hit_t::in_plane};
  for (int k = 0; k < 3; ++k) {
    const fr& pa = component(t.corner(k), l.a);
    if (off[k].sign() == 0) {
      along.push_back(pa);
      hit.flags |= 0x010u << k;
    }
    const int next = (k + 1) % 3;
    if (off[k].sign() * off[next].sign() < 0) {
      along.push_back(pa + (component(t.corner(next), l.a) - pa) * (off[k] / (off[k] - off[next])));
      hit.flags |= 0x002u << k;
    }
  }
  if (along.empty()) return {edge_hit_t::in_plane | edge_hit_t::miss};
  const fr* lo = &along[0];
  const fr* hi = &along[0];
  for (const fr& x : along) {
    if (geom::compare(x, *lo) < 0) lo = &x;
    if (geom::compare(x, *hi) > 0) hi = &x;
  }
  hit.t0 = lattice_safe_double(*lo);
  hit.t1 = lattice_safe_double(*hi);
  return hit;
}

}  // namespace

edge_hit_t cut_edge_line(const tri_extension_t& tri, int axis, double u, double v) {
  const grid_line_t line(axis, u, v);
  if (tri.normal_sign[axis] != 0) return piercing_hit(tri, line);
  if (plane_side(tri, line) != 0) return {edge_hit_t::in_plane | edge_hit_t::miss};
  return overlap_hit(tri, line);
}

}  // namespace cbtr
