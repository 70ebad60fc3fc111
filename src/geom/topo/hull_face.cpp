#include "geom/topo/hull_face.h"

#include <algorithm>

namespace geom {

namespace {

// Of two directions leaving cur, whether p is the next corner rather than
// q: p turns less to the left from the incoming direction `in`, or lies on
// q's ray nearer to cur. Of opposite collinear rays, the one straight ahead
// wins.
bool turns_less(const std::vector<hull_point_t>& pts, const face_normal_t& n, hull_index_t cur, const vec3fr& in,
                hull_index_t q, hull_index_t p) {
  const vec3fr& c = pts[cur].pos;
  const int s = side(n, pts[cur], pts[q], pts[p]);
  if (s != 0) return s < 0;
  const vec3fr dp = pts[p].pos - c;
  const vec3fr dq = pts[q].pos - c;
  if (dot(dp, dq).sign() > 0) return lt(dot(dp, dp), dot(dq, dq));
  return dot(dp, in).sign() > 0;
}

// Left of b -> a, or on its line outside the segment.
bool beyond_edge(const std::vector<hull_point_t>& pts, const face_normal_t& n, hull_index_t b, hull_index_t a,
                 hull_index_t p) {
  const vec3fr& pb = pts[b].pos;
  const vec3fr& pa = pts[a].pos;
  const vec3fr& pp = pts[p].pos;
  const int s = side(n, pts[b], pts[a], pts[p]);
  if (s != 0) return s > 0;
  return dot(pp - pb, pa - pb).sign() < 0 || dot(pp - pa, pb - pa).sign() < 0;
}

}  // namespace

std::vector<hull_index_t> hull_face_polygon(const std::vector<hull_point_t>& pts, hull_index_t b, hull_index_t a,
                                            const std::vector<hull_index_t>& others, const vec3fr& normal) {
  const face_normal_t n(normal);
  std::vector<hull_index_t> pool;
  for (hull_index_t p : others)
    if (beyond_edge(pts, n, b, a, p)) pool.push_back(p);
  std::vector<hull_index_t> polygon = {b, a};
  hull_index_t prev = b;
  hull_index_t cur = a;
  // Gift wrapping in the plane; b closes the polygon once nothing turns
  // less than it.
  for (;;) {
    const vec3fr in = pts[cur].pos - pts[prev].pos;
    auto best = pool.end();
    hull_index_t next = b;
    for (auto it = pool.begin(); it != pool.end(); ++it) {
      if (turns_less(pts, n, cur, in, next, *it)) {
        next = *it;
        best = it;
      }
    }
    if (best == pool.end()) return polygon;
    pool.erase(best);
    polygon.push_back(next);
    prev = cur;
    cur = next;
  }
}

std::vector<std::array<hull_index_t, 3>> triangulate_convex(const std::vector<hull_point_t>& pts,
                                                            std::vector<hull_index_t> polygon, const vec3fr& normal) {
  const face_normal_t n(normal);
  const auto at = [&](std::size_t i) { return polygon[i % polygon.size()]; };
  const auto is_corner = [&](std::size_t i) {
    const std::size_t k = polygon.size();
    return side(n, pts[at(i + k - 1)], pts[at(i)], pts[at(i + 1)]) > 0;
  };
  std::vector<bool> corner(polygon.size());
  for (std::size_t i = 0; i < polygon.size(); ++i) corner[i] = is_corner(i);
  std::vector<std::array<hull_index_t, 3>> out;
  out.reserve(polygon.size() - 2);
  while (polygon.size() > 3) {
    const std::size_t k = polygon.size();
    // Cutting a corner next to a straight run keeps the rest of the
    // polygon from collapsing onto that run's line; without straight runs
    // every vertex is a corner and any will do.
    std::size_t cut = k;
    for (std::size_t i = 0; i < k && cut == k; ++i)
      if (corner[i] && (!corner[(i + 1) % k] || !corner[(i + k - 1) % k])) cut = i;
    if (cut == k) cut = 0;
    out.push_back({at(cut + k - 1), at(cut), at(cut + 1)});
    polygon.erase(polygon.begin() + static_cast<std::ptrdiff_t>(cut));
    corner.erase(corner.begin() + static_cast<std::ptrdiff_t>(cut));
    const std::size_t before = (cut + k - 2) % (k - 1);
    const std::size_t after = cut % (k - 1);
    corner[before] = is_corner(before);
    corner[after] = is_corner(after);
  }
  out.push_back({polygon[0], polygon[1], polygon[2]});
  return out;
}

}  // namespace geom
