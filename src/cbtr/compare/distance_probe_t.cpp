#include "cbtr/compare/distance_probe_t.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "cbtr/compare/distance_sign.h"

namespace cbtr {

namespace {

// Rounded squared distances of equal exact values differ by a few units in
// the last place; this window keeps every such tie for the exact order.
constexpr double tie_window = 1e-12;

double box_d2(const tri_node_t& n, const std::array<double, 3>& q) {
  const double h = half_width(n.level());
  const double c[3] = {static_cast<double>(n.ix), static_cast<double>(n.iy), static_cast<double>(n.iz)};
  double s = 0;
  for (int k = 0; k < 3; ++k) {
    const double e = std::max(0.0, std::abs(q[k] - c[k]) - h);
    s += e * e;
  }
  return s;
}

// The same for a triangle's box, which is in model units and exact: its
// corners are lattice values.
double tri_box_d2(const tri_sat_t& s, const std::array<double, 3>& q) {
  double sum = 0;
  for (int k = 0; k < 3; ++k) {
    const double lo = (s.box[k] - lattice_origin) / lattice_step, hi = (s.box[k + 3] - lattice_origin) / lattice_step;
    const double e = std::max({0.0, lo - q[k], q[k] - hi});
    sum += e * e;
  }
  return sum;
}

}  // namespace

lattice_point_t sample_point(const cube_node_t& leaf) {
  std::array<std::array<double, 3>, 12> points;
  std::array<double, 3> mean = {0, 0, 0};
  int count = 0;
  for (int e = 0; e < 12; ++e) {
    if (!std::isfinite(leaf.tips[e].load())) continue;
    points[count] = tip_point(leaf, e);
    for (int k = 0; k < 3; ++k) mean[k] += points[count][k];
    ++count;
  }
  if (count == 0)
    return {static_cast<std::int64_t>(leaf.x), static_cast<std::int64_t>(leaf.y), static_cast<std::int64_t>(leaf.z)};
  for (double& m : mean) m /= count;
  const auto d2 = [&mean](const std::array<double, 3>& p) {
    return std::pow(p[0] - mean[0], 2) + std::pow(p[1] - mean[1], 2) + std::pow(p[2] - mean[2], 2);
  };
  const auto* best = std::min_element(points.begin(), points.begin() + count,
                                      [&d2](const auto& a, const auto& b) { return d2(a) < d2(b); });
  return {snap_to_lattice((*best)[0]), snap_to_lattice((*best)[1]), snap_to_lattice((*best)[2])};
}

distance_probe_t::distance_probe_t(const design_t& design, const tri_tree_t& tree, double max_distance,
                                   double resolution)
    : _design(design),
      _tree(tree),
      _max_d2(std::pow(max_distance / lattice_step, 2)),
      _resolution_d2(std::pow(resolution / lattice_step, 2)),
      _stamp(design.tris.size(), 0) {}

double distance_probe_t::distance(const cube_node_t& leaf) { return distance_from(sample_point(leaf)); }

double distance_probe_t::distance_from(const lattice_point_t& q) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  if (++_query == 0) {
    std::fill(_stamp.begin(), _stamp.end(), 0);
    _query = 1;
  }
  _hits.clear();
  _best = _max_d2;
  const std::array<double, 3> qd = {static_cast<double>(q[0]), static_cast<double>(q[1]), static_cast<double>(q[2])};
  _search(_tree.root, qd, q);
  const std::vector<feature_hit_t> nearest = _nearest();
  if (nearest.empty() || nearest.front().d2 <= _resolution_d2) return nan;
  const int sign = distance_sign(_design, nearest, q);
  return sign == 0 ? nan : sign * std::sqrt(nearest.front().d2) * lattice_step;
}

void distance_probe_t::_search(const tri_node_t& node, const std::array<double, 3>& q, const lattice_point_t& qi) {
  for (const tri_sat_t* s : node.tris)
    if (tri_box_d2(*s, q) <= _best * (1 + tie_window) + 1) _take(static_cast<std::uint32_t>(s - _tree.sats.data()), qi);
  // Nearest child first, by insertion: there are at most eight.
  std::array<std::pair<double, const tri_node_t*>, 8> order;
  int n = 0;
  for (const auto& c : node.child) {
    if (!c) continue;
    int i = n++;
    const double d = box_d2(*c, q);
    for (; i > 0 && order[i - 1].first > d; --i) order[i] = order[i - 1];
    order[i] = {d, c.get()};
  }
  for (int i = 0; i < n; ++i) {
    if (order[i].first > _best * (1 + tie_window) + 1) break;
    _search(*order[i].second, q, qi);
  }
}

void distance_probe_t::_take(std::uint32_t tri, const lattice_point_t& q) {
  if (_stamp[tri] == _query) return;
  _stamp[tri] = _query;
  const feature_hit_t hit = nearest_feature(_design, tri, q);
  if (hit.d2 > _best * (1 + tie_window)) return;
  _best = std::min(_best, hit.d2);
  _hits.push_back(hit);
}

std::vector<feature_hit_t> distance_probe_t::_nearest() const {
  std::vector<feature_hit_t> near;
  for (const feature_hit_t& h : _hits)
    if (h.d2 <= _best * (1 + tie_window)) near.push_back(h);
  if (near.size() < 2) return near;
  std::sort(near.begin(), near.end(), [](const feature_hit_t& a, const feature_hit_t& b) { return a.tri < b.tri; });
  std::vector<feature_hit_t> least = {near.front()};
  for (std::size_t i = 1; i < near.size(); ++i) {
    const int c = compare_d2(near[i], least.front());
    if (c < 0) least.clear();
    if (c <= 0) least.push_back(near[i]);
  }
  return least;
}

}  // namespace cbtr
