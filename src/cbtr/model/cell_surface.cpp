#include "cbtr/model/cell_surface.h"

#include <bit>

#include <cmath>

#include "cbtr/model/surface_table.h"

namespace cbtr {

std::vector<cube_tri_t> leaf_triangles(const cube_node_t& leaf) {
  std::vector<cube_tri_t> out;
  const surface_row_t& row = surface_table[solid_corner_mask(leaf.corners)];
  for (int i = 0; i < row.size; i += 3) {
    const int e[3] = {row.edges[i], row.edges[i + 1], row.edges[i + 2]};
    if (!std::isfinite(leaf.tips[e[0]].load()) || !std::isfinite(leaf.tips[e[1]].load()) ||
        !std::isfinite(leaf.tips[e[2]].load()))
      continue;
    cube_tri_t tri;
    for (int k = 0; k < 3; ++k) tri.v[k] = tip_point(leaf, e[k]);
    if (tri.v[0] == tri.v[1] || tri.v[1] == tri.v[2] || tri.v[2] == tri.v[0]) continue;
    tri.node = &leaf;
    tri.index = static_cast<std::uint8_t>(i / 3);
    out.push_back(tri);
  }
  return out;
}

std::optional<std::uint32_t> branch_corner_word(const std::array<std::uint32_t, 8>& words, std::uint8_t known) {
  if (!known) return std::nullopt;
  const int first = std::countr_zero(known);
  const std::uint32_t centre = corner_of(words[first], 7 - first);
  std::uint32_t word = 0;
  for (int k = 0; k < 8; ++k) word = with_corner(word, k, (known >> k) & 1 ? corner_of(words[k], k) : centre);
  return word;
}

std::optional<std::uint32_t> branch_corner_word(const child_snapshot_t& children) {
  std::array<std::uint32_t, 8> words{};
  std::uint8_t known = 0;
  for (int k = 0; k < 8; ++k)
    if (children[k]) {
      words[k] = children[k]->corners;
      known |= static_cast<std::uint8_t>(1u << k);
    }
  return branch_corner_word(words, known);
}

namespace {

// The tip of half edge e in child, when that half edge has a crossing.
std::optional<double> half_edge_tip(const std::shared_ptr<cube_node_t>& child, int e) {
  if (!child || !edge_has_crossing(edge_code(child->corners, e))) return std::nullopt;
  return child->tips[e].load();
}

// Neither half edge knows the crossing: the children meet with different
// uniform states there. The summary puts the tip halfway along the half
// edge on the solid side, which is close enough for a coarse drawing.
double fallback_tip(const cube_node_t& branch, int e, std::uint32_t code) {
  const std::uint32_t centre[3] = {branch.x, branch.y, branch.z};
  const auto quarter = static_cast<std::int32_t>(half_width(branch.depth()) / 2);
  return lattice_offset_to_model(centre[edge_axis(e)], code == edge_code_high_solid ? quarter : -quarter);
}

}  // namespace

void summarise_branch_tips(cube_node_t& branch, const child_snapshot_t& children) {
  for (int e = 0; e < 12; ++e) {
    const std::uint32_t code = edge_code(branch.corners, e);
    if (!edge_has_crossing(code)) {
      branch.tips[e] = no_tip;
      continue;
    }
    std::optional<double> tip = half_edge_tip(children[edge_low_corner(e)], e);
    if (!tip) tip = half_edge_tip(children[edge_high_corner(e)], e);
    branch.tips[e] = tip ? *tip : fallback_tip(branch, e, code);
  }
}

}  // namespace cbtr
