#include "cbtr/step/leaf_merge.h"

#include <array>
#include <cmath>

#include "cbtr/model/cell_numbering.h"

namespace cbtr {

namespace {

// The stock's solid part of an edge is [lo, tip] (code 6) or [tip, hi]
// (code 9); the tool's likewise. Returns the new tip, or the stock tip when
// the edge stays.
struct edge_merge_t {
  double tip;
  bool changed;
};

edge_merge_t merge_edge(std::uint32_t s, std::uint32_t t, double stock_tip, double tool_tip, bool touch_counts) {
  if (s == edge_code_air || t == edge_code_air) return {stock_tip, false};
  if (s == edge_code_solid) return {t == edge_code_solid ? no_tip : tool_tip, true};
  if (t == s || t == edge_code_solid) return {no_tip, true};
  // Opposite crossings: the stock keeps its tip while the tool's solid part
  // stays clear of the stock's.
  const bool clear = s == edge_code_low_solid ? (touch_counts ? tool_tip > stock_tip : tool_tip >= stock_tip)
                                              : (touch_counts ? stock_tip > tool_tip : stock_tip >= tool_tip);
  return clear ? edge_merge_t{stock_tip, false} : edge_merge_t{tool_tip, true};
}

// Edge e, read with the corner word, holds solid of positive length from
// its end at corner k; box is the leaf's.
bool solid_leaves_corner(const cube_node_t& leaf, const std::array<double, 6>& box, std::uint32_t corners, int e,
                         int k) {
  const std::uint32_t code = edge_code(corners, e);
  if (code == edge_code_solid) return true;
  if (!edge_has_crossing(code)) return false;
  const int a = edge_axis(e);
  const double tip = leaf.tips[e].load();
  return (k >> a) & 1 ? tip < box[a + 3] : tip > box[a];
}

}  // namespace

bool leaf_holds_volume(const cube_node_t& leaf, std::uint32_t corners) {
  const std::array<double, 6> box = cell_box(leaf);
  for (int k = 0; k < 8; ++k) {
    if (corner_of(corners, k) != corner_solid) continue;
    bool all_axes = true;
    for (int a = 0; a < 3 && all_axes; ++a) {
      const int e = 4 * a + ((k >> axis_after(a)) & 1) + 2 * ((k >> axis_before(a)) & 1);
      all_axes = solid_leaves_corner(leaf, box, corners, e, k);
    }
    if (all_axes) return true;
  }
  return false;
}

bool holds_volume(const cube_node_t& node) {
  if (node.kind & kind_leaf) return leaf_holds_volume(node, node.corners);
  if (!(node.kind & kind_branch)) return node.kind == kind_solid;
  const auto kids = snapshot_children(node);
  for (int k = 0; k < 8; ++k)
    if (kids[k] ? holds_volume(*kids[k]) : corner_of(node.corners, k) == corner_solid) return true;
  return false;
}

bool merge_tool_leaf(cube_node_t& stock, const cube_node_t& tool, bool touch_counts) {
  const std::uint32_t stock_word = stock.corners, tool_word = tool.corners;
  bool changed = false;
  for (int e = 0; e < 12; ++e) {
    const edge_merge_t m = merge_edge(edge_code(stock_word, e), edge_code(tool_word, e), stock.tips[e].load(),
                                      tool.tips[e].load(), touch_counts);
    if (m.changed) stock.tips[e] = m.tip;
    changed |= m.changed;
  }
  std::uint32_t word = stock_word;
  for (int k = 0; k < 8; ++k)
    if (corner_of(stock_word, k) == corner_solid && corner_of(tool_word, k) == corner_solid)
      word = with_corner(word, k, corner_air);
  stock.corners = word;
  return changed;
}

int compare_leaf_with_tool(std::uint32_t stock_word, const cube_node_t::tips_t& stock_tips, std::uint32_t tool_word,
                           const cube_node_t::tips_t& tool_tips) {
  constexpr int takes_nothing = 1, merge_is_faithful = 2;
  constexpr double tolerance = 1e-7;
  int v = takes_nothing | merge_is_faithful;
  for (int e = 0; e < 12; ++e) {
    const std::uint32_t t = edge_code(tool_word, e), s = edge_code(stock_word, e);
    const bool t_crosses = edge_has_crossing(t), s_crosses = edge_has_crossing(s);
    if (t == edge_code_air && s_crosses) v &= ~merge_is_faithful;
    if (t == edge_code_solid && s != edge_code_air) v &= ~takes_nothing;
    if (t_crosses && s == edge_code_solid) v &= ~takes_nothing;
    if (t_crosses && s_crosses) {
      // Positive: the tool's solid part ends short of the stock tip.
      const double d = t == edge_code_low_solid ? stock_tips[e] - tool_tips[e] : tool_tips[e] - stock_tips[e];
      if (t == s && d > 0) return 3;
      if (d > tolerance) v &= ~merge_is_faithful;
      if (d < -tolerance) v &= ~takes_nothing;
      if (t == s) v &= ~takes_nothing;
    }
    if (v == 0) return 3;
  }
  return (v & takes_nothing) ? 2 : 1;
}

}  // namespace cbtr
