#include "cbtr/inspect/surface_export.h"

#include <cmath>

#include "cbtr/cache/cell_triangles.h"
#include "common/check.h"

namespace cbtr {

int export_depth(double width) {
  QV_CHECK(width >= 0, "export_depth: width must be a number, 0 or more");
  const double x = std::log2(width / 185363.80004736633);  // 131072 * sqrt(2)
  if (std::isinf(x)) return x < 0 ? max_depth : 0;
  const double d = -std::floor(x);
  return d >= max_depth ? max_depth : d <= 0 ? 0 : static_cast<int>(d);
}

namespace {

void collect(const cube_node_t& node, int depth, std::vector<std::array<double, 12>>& out) {
  if ((node.kind & kind_leaf) || node.depth() >= depth) {
    if (const auto entry = cell_triangles(node))
      for (const cube_tri_t& t : entry->payload)
        out.push_back({t.v[0][0], t.v[0][1], t.v[0][2], t.v[1][0], t.v[1][1], t.v[1][2], t.v[2][0], t.v[2][1],
                       t.v[2][2], t.normal[0], t.normal[1], t.normal[2]});
    return;
  }
  for (const auto& child : snapshot_children(node))
    if (child) collect(*child, depth, out);
}

}  // namespace

std::vector<std::array<double, 15>> coloured_surface_records(const cube_tree_t& tree, double width) {
  std::vector<std::array<double, 15>> out;
  for (const std::array<double, 12>& r : surface_records(tree, width)) {
    // n = (b - a) x (c - b), as a unit vector.
    const double u[3] = {r[3] - r[0], r[4] - r[1], r[5] - r[2]}, v[3] = {r[6] - r[3], r[7] - r[4], r[8] - r[5]};
    double n[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
    const double inv = 1 / std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
    for (double& c : n) c *= inv;
    out.push_back({1.0, 1.0, 1.0, n[0], n[1], n[2], r[0], r[1], r[2], r[3], r[4], r[5], r[6], r[7], r[8]});
  }
  return out;
}

std::vector<std::array<double, 12>> surface_records(const cube_tree_t& tree, double width) {
  std::vector<std::array<double, 12>> out;
  if (const std::shared_ptr<cube_node_t> root = tree.root.load()) collect(*root, export_depth(width), out);
  return out;
}

}  // namespace cbtr
