#include "cbtr/compare/distance_sign.h"

#include <algorithm>

namespace cbtr {

namespace {

int sign_of(__int128 v) { return v > 0 ? 1 : v < 0 ? -1 : 0; }

// The corners of edge code 1..3: p0-p1, p1-p2, p2-p0.
std::array<int, 2> edge_corners(int code) { return {code - 1, code % 3}; }

bool same_segment(const lattice_tri_t& a, int ca, const lattice_tri_t& b, int cb) {
  const auto [a0, a1] = edge_corners(ca);
  const auto [b0, b1] = edge_corners(cb);
  return (a.p[a0] == b.p[b0] && a.p[a1] == b.p[b1]) || (a.p[a0] == b.p[b1] && a.p[a1] == b.p[b0]);
}

// The solid near a convex edge is the meeting of the two inner half-spaces,
// near a concave edge their union; a flat edge is either.
int shared_edge_sign(const design_t& design, const feature_hit_t& ha, const feature_hit_t& hb,
                     const lattice_point_t& q) {
  const lattice_tri_t& a = design.tris[ha.tri];
  const lattice_tri_t& b = design.tris[hb.tri];
  if (!same_segment(a, ha.code, b, hb.code)) return 0;
  const lattice_point_t& apex = b.p[(hb.code + 1) % 3];
  const bool concave = plane_side(a, apex) > 0;
  const int sa = sign_of(plane_side(a, q)), sb = sign_of(plane_side(b, q));
  if (concave) return (sa < 0 || sb < 0) ? -1 : 1;
  return (sa > 0 || sb > 0) ? 1 : -1;
}

int farthest_plane_sign(const design_t& design, const std::vector<feature_hit_t>& nearest, const lattice_point_t& q) {
  feature_hit_t best{};
  bool first = true;
  for (const feature_hit_t& h : nearest) {
    const lattice_tri_t& t = design.tris[h.tri];
    const __int128 nn = static_cast<__int128>(t.n[0]) * t.n[0] + static_cast<__int128>(t.n[1]) * t.n[1] +
                        static_cast<__int128>(t.n[2]) * t.n[2];
    // The face form: (n . w)^2 / |n|^2 with w from the nearest point, which
    // lies in the plane, so n . w = n . (q - p0).
    const feature_hit_t plane{h.tri, 0, plane_side(t, q), nn, 0};
    if (first || compare_d2(plane, best) > 0) best = plane;
    first = false;
  }
  return sign_of(best.num);
}

}  // namespace

int distance_sign(const design_t& design, const std::vector<feature_hit_t>& nearest, const lattice_point_t& q) {
  if (nearest.empty()) return 0;
  const int kind = feature_kind(nearest.front().code);
  if (kind == 0) return sign_of(plane_side(design.tris[nearest.front().tri], q));
  if (nearest.size() == 2 && kind == 1 && feature_kind(nearest[1].code) == 1)
    return shared_edge_sign(design, nearest[0], nearest[1], q);
  if (nearest.size() >= 3 && kind == 2) return farthest_plane_sign(design, nearest, q);
  return 0;
}

}  // namespace cbtr
