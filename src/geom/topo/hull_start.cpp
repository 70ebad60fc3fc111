#include "geom/topo/hull_start.h"

namespace geom {

namespace {

bool lex_less(const vec3fr& p, const vec3fr& q) {
  if (!eq(p.x, q.x)) return lt(p.x, q.x);
  if (!eq(p.y, q.y)) return lt(p.y, q.y);
  return lt(p.z, q.z);
}

// Sign of the cross product of p - a and q - a seen from above.
int turn_xy(const vec3fr& a, const vec3fr& p, const vec3fr& q) {
  return ((p.x - a.x) * (q.y - a.y) - (p.y - a.y) * (q.x - a.x)).sign();
}

// In the vertical plane through a along dir (x and y only): the distance
// along dir, scaled, and the height above a.
struct plane_coords {
  fr s;
  fr z;
};

plane_coords in_plane(const vec3fr& a, const vec3fr& dir, const vec3fr& p) {
  return {(p.x - a.x) * dir.x + (p.y - a.y) * dir.y, p.z - a.z};
}

// Whether p is a better next corner than q going round from a: it lies to
// the right of a -> q, or on that ray nearer to a.
bool better_in_plane(const plane_coords& q, const plane_coords& p) {
  const int s = (q.s * p.z - q.z * p.s).sign();
  if (s != 0) return s < 0;
  return lt(p.s * p.s + p.z * p.z, q.s * q.s + q.z * q.z);
}

}  // namespace

hull_start_t find_hull_start(const std::vector<hull_point_t>& pts) {
  if (pts.size() < 4) return {false, 0, 0};
  hull_index_t a = 0;
  for (hull_index_t i = 1; i < pts.size(); ++i)
    if (lex_less(pts[i].pos, pts[a].pos)) a = i;
  const vec3fr& pa = pts[a].pos;
  // Seen from above, a is a corner of the points' outline; b0 makes the
  // outline's edge from a, with every point left of it or on its line.
  bool have_b0 = false;
  hull_index_t b0 = 0;
  for (hull_index_t i = 0; i < pts.size(); ++i) {
    if (eq(pts[i].pos.x, pa.x) && eq(pts[i].pos.y, pa.y)) continue;
    if (!have_b0 || turn_xy(pa, pts[b0].pos, pts[i].pos) < 0) b0 = i, have_b0 = true;
  }
  if (!have_b0) return {false, 0, 0};
  // The points of the vertical plane through a and b0 make a polygon in
  // which a is a corner; its edge from a is an edge of the hull.
  const vec3fr dir = pts[b0].pos - pa;
  hull_index_t b = b0;
  plane_coords best = in_plane(pa, dir, pts[b0].pos);
  for (hull_index_t i = 0; i < pts.size(); ++i) {
    if (i == a || i == b || turn_xy(pa, pts[b0].pos, pts[i].pos) != 0) continue;
    const plane_coords c = in_plane(pa, dir, pts[i].pos);
    if (better_in_plane(best, c)) b = i, best = c;
  }
  return {true, a, b};
}

}  // namespace geom
