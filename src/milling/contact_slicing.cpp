#include "milling/contact_slicing.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "milling/angles.h"

namespace mech {

namespace {

struct point2_t {
  double x;
  double y;
};

point2_t xy(const geom::vec3d& p) { return {p.x, p.y}; }
double dot2(point2_t a, point2_t b) { return a.x * b.x + a.y * b.y; }
double cross2(point2_t a, point2_t b) { return a.x * b.y - a.y * b.x; }
point2_t sub2(point2_t a, point2_t b) { return {a.x - b.x, a.y - b.y}; }

// An end of the edge exactly when the cut falls on it, so that the two edges
// meeting at a corner give the same point.
geom::vec3d edge_point(const geom::vec3d& a, const geom::vec3d& b, double t) {
  if (t == 0) return a;
  if (t == 1) return b;
  return a + (b - a) * t;
}

void add_distinct(std::vector<geom::vec3d>& points, const geom::vec3d& p) {
  if (std::find(points.begin(), points.end(), p) == points.end()) points.push_back(p);
}

double signed_area2(const contact_tri_t& t) {
  return cross2(sub2(xy(t.v[1]), xy(t.v[0])), sub2(xy(t.v[2]), xy(t.v[0])));
}

bool inside2(const contact_tri_t& t, point2_t p) {
  const double sign = signed_area2(t) >= 0 ? 1 : -1;
  for (int i = 0; i < 3; ++i) {
    const point2_t a = xy(t.v[i]);
    const point2_t b = xy(t.v[(i + 1) % 3]);
    if (sign * cross2(sub2(b, a), sub2(p, a)) < 0) return false;
  }
  return true;
}

double distance_to_segment2(point2_t p, point2_t a, point2_t b) {
  const point2_t d = sub2(b, a);
  const double len2 = dot2(d, d);
  const double t = len2 > 0 ? std::clamp(dot2(sub2(p, a), d) / len2, 0.0, 1.0) : 0.0;
  const point2_t q{a.x + d.x * t - p.x, a.y + d.y * t - p.y};
  return std::sqrt(dot2(q, q));
}

// The nearest and farthest distance of the triangle's xy projection from
// the axis.
std::pair<double, double> radial_extent(const contact_tri_t& t) {
  double lo = inside2(t, {0, 0}) ? 0.0 : HUGE_VAL;
  double hi = 0;
  for (int i = 0; i < 3; ++i) {
    const point2_t a = xy(t.v[i]);
    hi = std::max(hi, std::sqrt(dot2(a, a)));
    lo = std::min(lo, distance_to_segment2({0, 0}, a, xy(t.v[(i + 1) % 3])));
  }
  return {lo, hi};
}

// The angles at which the circle of radius r crosses the triangle's edges
// (seen from above), ascending.
std::vector<double> circle_crossings(const contact_tri_t& t, double r) {
  std::vector<double> out;
  for (int i = 0; i < 3; ++i) {
    const point2_t a = xy(t.v[i]);
    const point2_t d = sub2(xy(t.v[(i + 1) % 3]), a);
    const double qa = dot2(d, d);
    const double qb = 2 * dot2(a, d);
    const double disc = qb * qb - 4 * qa * (dot2(a, a) - r * r);
    if (!(qa > 0) || disc < 0) continue;
    for (double root : {(-qb - std::sqrt(disc)) / (2 * qa), (-qb + std::sqrt(disc)) / (2 * qa)}) {
      if (root >= 0 && root <= 1) out.push_back(std::atan2(a.y + d.y * root, a.x + d.x * root));
    }
  }
  std::sort(out.begin(), out.end());
  return out;
}

void insert_ring(range_map_t& rings, double radius, angle_range_t r) { insert_range(rings[radius], r.start, r.end); }

}  // namespace

std::optional<angle_range_t> plane_cut_range(const contact_tri_t& t, const geom::vec3d& n, double level) {
  std::vector<geom::vec3d> points;
  for (int i = 0; i < 3; ++i) {
    const geom::vec3d& a = t.v[i];
    const geom::vec3d& b = t.v[(i + 1) % 3];
    const double s = (level - a.z) / (b.z - a.z);
    if (std::isnan(s)) {
      add_distinct(points, a);
      add_distinct(points, b);
    } else if (s >= 0 && s <= 1) {
      add_distinct(points, edge_point(a, b, s));
    }
  }
  if (points.size() != 2) return std::nullopt;
  geom::vec3d a = points[0];
  geom::vec3d b = points[1];
  if (!(n.x * (b.y - a.y) - n.y * (b.x - a.x) > 0)) std::swap(a, b);
  return angle_range_t{polar_angle(a.x, a.y), polar_angle(b.x, b.y)};
}

std::vector<angle_range_t> circle_cut_ranges(const contact_tri_t& t, double r) {
  const std::vector<double> cross = circle_crossings(t, r);
  if (cross.empty()) {
    if (inside2(t, {r, 0})) return {{-std::numbers::pi, std::numbers::pi}};
    return {};
  }
  // Between two crossings in turn the circle is wholly inside the triangle
  // or wholly outside: its middle tells which.
  std::vector<angle_range_t> out;
  for (std::size_t i = 0; i < cross.size(); ++i) {
    const double from = cross[i];
    const double to = i + 1 < cross.size() ? cross[i + 1] : cross[0] + 2 * std::numbers::pi;
    const double mid = (from + to) / 2;
    if (to > from && inside2(t, {r * std::cos(mid), r * std::sin(mid)})) {
      out.push_back({wrap_angle(from), wrap_angle(to)});
    }
  }
  return out;
}

void add_exact_rings(const contact_tri_t& t, double ring_step, range_map_t& rings) {
  const double r0 = ring_step / 2 + 0.0001;
  const auto [lo, hi] = radial_extent(t);
  const double first = std::max(0.0, std::ceil((lo - r0) / ring_step));
  const double last = std::floor((hi - r0) / ring_step);
  for (double k = first; k <= last; ++k) {
    const double r = r0 + k * ring_step;
    for (const angle_range_t& range : circle_cut_ranges(t, r)) insert_ring(rings, r, range);
  }
}

void add_approximate_rings(const contact_tri_t& t, double ring_step, range_map_t& rings) {
  const double r0 = ring_step / 2 + 0.0001;
  const auto by_x = [](const geom::vec3d& a, const geom::vec3d& b) { return a.x < b.x; };
  const auto by_y = [](const geom::vec3d& a, const geom::vec3d& b) { return a.y < b.y; };
  const auto [x_lo, x_hi] = std::minmax_element(t.v.begin(), t.v.end(), by_x);
  const auto [y_lo, y_hi] = std::minmax_element(t.v.begin(), t.v.end(), by_y);
  const bool along_x = x_hi->x - x_lo->x >= y_hi->y - y_lo->y;
  const point2_t a = xy(along_x ? *x_lo : *y_lo);
  const point2_t b = xy(along_x ? *x_hi : *y_hi);
  const point2_t m{(a.x + b.x) / 2, (a.y + b.y) / 2};
  const double h = std::sqrt(dot2(sub2(b, a), sub2(b, a)));
  const double rho = std::sqrt(dot2(m, m));
  const double half = h / rho;
  const double centre = std::atan2(m.y, m.x);
  const angle_range_t range = half > std::numbers::pi
                                  ? angle_range_t{-std::numbers::pi, std::numbers::pi}
                                  : angle_range_t{wrap_angle(centre - half), wrap_angle(centre + half)};
  const double first = std::max(0.0, std::ceil((rho - h - r0) / ring_step));
  const double end = std::floor((rho + h - r0) / ring_step);
  for (double k = first; k < end; ++k) insert_ring(rings, r0 + k * ring_step, range);
}

}  // namespace mech
