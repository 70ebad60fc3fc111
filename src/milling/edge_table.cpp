#include "milling/edge_table.h"

#include <algorithm>

namespace mech {

namespace {

edge_point_t mix(const edge_point_t& a, const edge_point_t& b, double s) {
  return {a.r + (b.r - a.r) * s, a.theta + (b.theta - a.theta) * s, a.z + (b.z - a.z) * s,
          a.rake + (b.rake - a.rake) * s};
}

}  // namespace

std::optional<edge_point_t> edge_within(const std::vector<edge_point_t>& table, edge_key_t key, double value) {
  if (table.empty() || !(value >= table.front().*key && value <= table.back().*key)) return std::nullopt;
  return edge_at(table, key, value);
}

edge_point_t edge_at(const std::vector<edge_point_t>& table, edge_key_t key, double value) {
  const auto it = std::lower_bound(table.begin(), table.end(), value,
                                   [key](const edge_point_t& p, double v) { return p.*key < v; });
  if (it == table.end()) return table.back();
  if ((*it).*key == value || it == table.begin()) return *it;
  const edge_point_t& a = *std::prev(it);
  return mix(a, *it, (value - a.*key) / ((*it).*key - a.*key));
}

}  // namespace mech
