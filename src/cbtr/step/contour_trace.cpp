#include "cbtr/step/contour_trace.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include "cbtr/model/surface_table.h"

namespace cbtr {

namespace {

using loop_t = std::vector<int>;  // edges whose tips the polygon visits

// The boundary of a row's surface in the cell: the segments between tips
// that only one triangle of the row has (the others are shared inside the
// cell), chained into loops. They run against the triangles' winding, as
// seen from the solid side.
std::vector<loop_t> boundary_loops(const surface_row_t& row) {
  int next[12];
  std::fill(std::begin(next), std::end(next), -1);
  bool used[12][12] = {};
  for (int i = 0; i < row.size; i += 3)
    for (int k = 0; k < 3; ++k) used[row.edges[i + k]][row.edges[i + (k + 1) % 3]] = true;
  for (int a = 0; a < 12; ++a)
    for (int b = 0; b < 12; ++b)
      if (used[a][b] && !used[b][a]) next[b] = a;
  std::vector<loop_t> loops;
  bool seen[12] = {};
  for (int start = 0; start < 12; ++start) {
    if (next[start] < 0 || seen[start]) continue;
    loop_t loop;
    for (int e = start; e >= 0 && !seen[e]; e = next[e]) {
      seen[e] = true;
      loop.push_back(e);
    }
    loops.push_back(std::move(loop));
  }
  return loops;
}

const std::array<std::vector<loop_t>, 256>& loop_table() {
  static const std::array<std::vector<loop_t>, 256> table = [] {
    std::array<std::vector<loop_t>, 256> t;
    for (int row = 0; row < 256; ++row) t[row] = boundary_loops(surface_table[row]);
    return t;
  }();
  return table;
}

}  // namespace

std::vector<contour_t> trace_leaf_polygons(const cube_node_t& leaf, bool forward) {
  std::vector<contour_t> out;
  for (const loop_t& loop : loop_table()[solid_corner_mask(leaf.corners)]) {
    contour_t poly;
    poly.reserve(loop.size());
    bool valid = true;
    for (int e : loop) {
      valid &= std::isfinite(leaf.tips[e].load());
      const contour_point_t p = tip_point(leaf, e);
      if (poly.empty() || p != poly.back()) poly.push_back(p);
    }
    if (poly.size() > 1 && poly.back() == poly.front()) poly.pop_back();
    if (!forward) std::reverse(poly.begin(), poly.end());
    if (valid && poly.size() >= 3) out.push_back(std::move(poly));
  }
  return out;
}

void trace_subtree(const cube_node_t& node, std::vector<contour_t>& out) {
  if (node.kind & kind_leaf) {
    for (contour_t& poly : trace_leaf_polygons(node, true)) out.push_back(std::move(poly));
    return;
  }
  for (const auto& child : snapshot_children(node))
    if (child) trace_subtree(*child, out);
}

void clamp_to_surface_box(std::vector<contour_t>& polygons, const cube_node_t& stock_leaf) {
  constexpr double inf = std::numeric_limits<double>::infinity();
  std::array<double, 3> lo = {inf, inf, inf}, hi = {-inf, -inf, -inf};
  for (int e = 0; e < 12; ++e) {
    if (!std::isfinite(stock_leaf.tips[e].load()) || !edge_has_crossing(edge_code(stock_leaf.corners, e))) continue;
    const contour_point_t p = tip_point(stock_leaf, e);
    for (int a = 0; a < 3; ++a) {
      lo[a] = std::min(lo[a], p[a]);
      hi[a] = std::max(hi[a], p[a]);
    }
  }
  const std::array<double, 6> cell = cell_box(stock_leaf);
  for (int k = 0; k < 8; ++k) {
    if (corner_of(stock_leaf.corners, k) != corner_solid) continue;
    for (int a = 0; a < 3; ++a) {
      const double face = cell[a + ((k >> a) & 1 ? 3 : 0)];
      lo[a] = std::min(lo[a], face);
      hi[a] = std::max(hi[a], face);
    }
  }
  for (contour_t& poly : polygons)
    for (contour_point_t& p : poly)
      for (int a = 0; a < 3; ++a)
        if (lo[a] <= hi[a]) p[a] = std::clamp(p[a], lo[a], hi[a]);
}

double contour_area(const std::vector<contour_t>& polygons) {
  double twice = 0;
  for (const contour_t& poly : polygons) {
    for (std::size_t i = 2; i < poly.size(); ++i) {
      const contour_point_t& a = poly[i - 2];
      const contour_point_t& b = poly[i - 1];
      const contour_point_t& c = poly[i];
      const double d1[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
      const double d2[3] = {c[0] - b[0], c[1] - b[1], c[2] - b[2]};
      const double x = d1[1] * d2[2] - d1[2] * d2[1], y = d1[2] * d2[0] - d1[0] * d2[2],
                   z = d1[0] * d2[1] - d1[1] * d2[0];
      twice += std::sqrt(x * x + y * y + z * z);
    }
  }
  return twice / 2;
}

}  // namespace cbtr
