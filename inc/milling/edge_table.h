#pragma once

// A cutting edge as a table of points sorted by one of their fields: the
// side edge by height z, the bottom edge by radius r. Between two records
// every field is interpolated; beyond the ends the end record stands.

#include <optional>
#include <vector>

namespace mech {

struct edge_point_t {
  double r;      // radius
  double theta;  // lag angle about the tool axis at this point
  double z;      // height
  double rake;   // local rake angle
};

using edge_key_t = double edge_point_t::*;

// The record at key, clamped to the ends. table must not be empty.
edge_point_t edge_at(const std::vector<edge_point_t>& table, edge_key_t key, double value);

// The record at key, or nothing beyond the ends.
std::optional<edge_point_t> edge_within(const std::vector<edge_point_t>& table, edge_key_t key, double value);

}  // namespace mech
