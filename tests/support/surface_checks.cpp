#include "surface_checks.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace quvra_test {

namespace {

using edge_key = std::pair<point3, point3>;

// A line through two points, as a direction of unit length with its first
// non-zero component positive and the point of the line closest to the
// origin, both rounded so that collinear edges share the key.
struct line_key {
  std::array<long long, 6> k;
  bool operator<(const line_key& o) const { return k < o.k; }
};

double dot(const point3& a, const point3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

line_key key_of(const point3& p, const point3& q, point3& dir) {
  dir = {q[0] - p[0], q[1] - p[1], q[2] - p[2]};
  const double len = std::sqrt(dot(dir, dir));
  for (double& c : dir) c /= len;
  const int lead = std::abs(dir[0]) > 1e-12 ? 0 : std::abs(dir[1]) > 1e-12 ? 1 : 2;
  if (dir[lead] < 0)
    for (double& c : dir) c = -c;
  const double s = dot(p, dir);
  const point3 foot = {p[0] - s * dir[0], p[1] - s * dir[1], p[2] - s * dir[2]};
  line_key key;
  for (int i = 0; i < 3; ++i) {
    key.k[i] = std::llround(dir[i] * 1e8);
    key.k[i + 3] = std::llround(foot[i] * 1e6);
  }
  return key;
}

// Coverage of one line by directed intervals must cancel everywhere.
bool coverage_cancels(std::vector<std::pair<double, int>> events) {
  std::sort(events.begin(), events.end());
  int coverage = 0;
  for (std::size_t i = 0; i < events.size(); ++i) {
    coverage += events[i].second;
    const bool gap_follows = i + 1 < events.size() && events[i + 1].first - events[i].first > 1e-9;
    if (coverage != 0 && gap_follows) return false;
  }
  return true;
}

}  // namespace

double enclosed_volume(const std::vector<triangle3>& tris, const point3& r) {
  double v = 0;
  for (const triangle3& t : tris) {
    const point3 a = {t[0][0] - r[0], t[0][1] - r[1], t[0][2] - r[2]};
    const point3 b = {t[1][0] - r[0], t[1][1] - r[1], t[1][2] - r[2]};
    const point3 c = {t[2][0] - r[0], t[2][1] - r[1], t[2][2] - r[2]};
    v +=
        (a[0] * (b[1] * c[2] - b[2] * c[1]) - a[1] * (b[0] * c[2] - b[2] * c[0]) + a[2] * (b[0] * c[1] - b[1] * c[0])) /
        6;
  }
  return v;
}

closure_t check_closure(const std::vector<triangle3>& tris) {
  closure_t out;
  std::map<edge_key, int> directed;
  for (const triangle3& t : tris)
    for (int i = 0; i < 3; ++i) ++directed[{t[i], t[(i + 1) % 3]}];
  std::map<line_key, std::vector<std::pair<double, int>>> lines;
  for (const auto& [edge, count] : directed) {
    out.edges += count;
    const auto back = directed.find({edge.second, edge.first});
    const int reverse = back == directed.end() ? 0 : back->second;
    out.exactly_matched += std::min(count, reverse);
    const int net = count - std::min(count, reverse);
    if (net == 0) continue;
    point3 dir;
    const line_key key = key_of(edge.first, edge.second, dir);
    const double s0 = dot(edge.first, dir), s1 = dot(edge.second, dir);
    // Entering adds the edge's sense along the line, leaving takes it away.
    const int sense = s1 > s0 ? 1 : -1;
    lines[key].push_back({std::min(s0, s1), sense * net});
    lines[key].push_back({std::max(s0, s1), -sense * net});
  }
  for (auto& [key, events] : lines) out.open_lines += !coverage_cancels(std::move(events));
  out.volume_about_origin = enclosed_volume(tris, {0, 0, 0});
  out.volume_about_far_point = enclosed_volume(tris, {1000, -2000, 3000});
  return out;
}

}  // namespace quvra_test
