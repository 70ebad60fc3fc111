#include "cbtr/build/cell_tree_builder_t.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "cbtr/build/evaluate_cell.h"
#include "cbtr/build/judge_value.h"
#include "cbtr/model/cell_surface.h"
#include "cbtr/model/cube_tree_t.h"
#include "cbtr/model/lattice_exact.h"
#include "common/stop.h"

namespace cbtr {

namespace {

constexpr double tolerance = 32 * std::numeric_limits<double>::epsilon();

// Children on the low side of each axis; the high side is the complement.
constexpr std::uint8_t low_children[3] = {0x55, 0x33, 0x0F};

// A box's low and high faces on each axis, in model coordinates: worked out
// once for all the triangles a cell hands on.
using box_faces_t = std::array<std::array<double, 2>, 3>;

box_faces_t faces_of(const cell_t& box) {
  box_faces_t faces;
  for (int a = 0; a < 3; ++a) faces[a] = {box.face_model(a, false), box.face_model(a, true)};
  return faces;
}

// Whether doubles prove the whole box strictly on one side of the plane:
// the plane function's least and greatest values over a box are taken at
// its corners, axis by axis.
bool plane_misses_box(const tri_extension_t& t, const box_faces_t& box) {
  double least = -t.plane_dd, greatest = -t.plane_dd, magnitude = std::abs(t.plane_dd);
  for (int a = 0; a < 3; ++a) {
    const double n = component(t.normal_d, a);
    const double lo = n * box[a][0], hi = n * box[a][1];
    least += std::min(lo, hi);
    greatest += std::max(lo, hi);
    magnitude += std::max(std::abs(lo), std::abs(hi));
  }
  const double bound = tolerance * magnitude;
  return greatest < -bound || least > bound;
}

// The side of the triangle's plane that corner k of the cell lies on: doubles
// where they prove it, fractions otherwise.
int plane_side(const tri_extension_t& t, const cell_t& cell, int k) {
  double value = -t.plane_dd, magnitude = std::abs(t.plane_dd);
  for (int a = 0; a < 3; ++a) {
    const double term = component(t.normal_d, a) * cell.face_model(a, (k >> a) & 1);
    value += term;
    magnitude += std::abs(term);
  }
  if (std::abs(value) > tolerance * magnitude) return value > 0 ? 1 : -1;
  fr exact = -t.plane_d;
  for (int a = 0; a < 3; ++a) exact += component(t.tri.normal, a) * lattice_fraction(cell.face_model(a, (k >> a) & 1));
  return exact.sign();
}

}  // namespace

cell_tree_builder_t::cell_tree_builder_t(const std::vector<tri_extension_t>& tris, std::uint32_t resolution,
                                         line_reuse_t reuse, const stop_token* stop)
    : tool_cells_t(resolution), _tris(tris), _stop(stop), _memo(tris, reuse), _planes(tris) {}

bool cell_tree_builder_t::stopped() const { return _stop && stop_token__stop_requested(_stop); }

child_lists_t cell_tree_builder_t::distribute(const cell_t& cell, std::span<const std::uint32_t> list) const {
  _masks.clear();
  std::array<box_faces_t, 8> children;
  for (int k = 0; k < 8; ++k) children[k] = faces_of(cell.child(k));
  std::array<double, 3> centre;
  for (int a = 0; a < 3; ++a) centre[a] = lattice_to_model(cell.centre[a]);
  for (std::uint32_t i : list) {
    const tri_extension_t& t = _tris[i];
    std::uint8_t mask = 0xFF;
    for (int a = 0; a < 3; ++a) {
      if (centre[a] > component(t.hi, a)) mask &= low_children[a];
      if (component(t.lo, a) > centre[a]) mask &= static_cast<std::uint8_t>(~low_children[a]);
    }
    for (int k = 0; k < 8; ++k)
      if ((mask >> k) & 1 && plane_misses_box(t, children[k])) mask &= static_cast<std::uint8_t>(~(1u << k));
    _masks.push_back(mask);
  }
  return child_lists_t(list, _masks);
}

bool cell_tree_builder_t::flat_in(const cell_t&, std::span<const std::uint32_t> list) {
  const std::uint32_t first = list.front();
  for (std::uint32_t i : list)
    if (!_planes.coplanar(first, i)) return false;
  return true;
}

bool cell_tree_builder_t::plane_only_touches(const cell_t& cell, std::span<const std::uint32_t> list) const {
  const tri_extension_t& t = _tris[list.front()];
  bool below = false, above = false;
  for (int k = 0; k < 8; ++k) {
    const int side = plane_side(t, cell, k);
    below |= side < 0;
    above |= side > 0;
  }
  return !(below && above);
}

std::optional<double> cell_tree_builder_t::reach(int axis, bool highest, std::span<const std::uint32_t> list) const {
  if (list.empty()) return std::nullopt;
  double bound = highest ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
  for (std::uint32_t i : list)
    bound = highest ? std::max(bound, component(_tris[i].hi, axis)) : std::min(bound, component(_tris[i].lo, axis));
  // Only corners whose doubles lie within rounding of the extreme can be it.
  const double slack = tolerance * (1.0 + std::abs(bound));
  const fr* extreme = nullptr;
  for (std::uint32_t i : list) {
    const tri_extension_t& t = _tris[i];
    for (int k = 0; k < 3; ++k) {
      if (std::abs(component(t.corner_d[k], axis) - bound) > slack) continue;
      const fr& c = component(t.corner(k), axis);
      const int order = extreme ? geom::compare(c, *extreme) : 0;
      if (!extreme || (highest ? order > 0 : order < 0)) extreme = &c;
    }
  }
  return lattice_safe_double(*extreme);
}

std::shared_ptr<cube_node_t> cell_tree_builder_t::leaf_over(const cell_t& cell, std::span<const std::uint32_t> list,
                                                            const edge_tips_t& tips) {
  const std::size_t defects_before = _defects;
  std::shared_ptr<cube_node_t> made = leaf(cell, tips);
  if (_defect_sink && _defects != defects_before) _record_defect(cell, list);
  return made;
}

edge_tips_t cell_tree_builder_t::evaluate(const cell_t& cell, std::span<const std::uint32_t> list) {
  return evaluate_cell(cell, list, _tris, _memo, _scratch);
}

void cell_tree_builder_t::_record_defect(const cell_t& cell, std::span<const std::uint32_t> list) {
  defect_record_t record{{cell.face_model(0, false), cell.face_model(1, false), cell.face_model(2, false),
                          cell.face_model(0, true), cell.face_model(1, true), cell.face_model(2, true)},
                         cell.depth,
                         {}};
  for (std::uint32_t i : list) {
    for (std::uint32_t e = 0; e < 12; ++e) {
      const int a = edge_axis(static_cast<int>(e)), low = edge_low_corner(static_cast<int>(e));
      const int a1 = axis_after(a), a2 = axis_before(a);
      if (const edge_hit_t* hit = _memo.meeting(i, a, cell.face(a1, (low >> a1) & 1), cell.face(a2, (low >> a2) & 1)))
        record.hits.push_back({&_tris[i], e, *hit});
    }
  }
  _defect_sink->push_back(std::move(record));
}

std::shared_ptr<cube_node_t> cell_tree_builder_t::leaf(const cell_t& cell, const edge_tips_t& tips) {
  std::shared_ptr<cube_node_t> leaf = tool_cells_t::leaf(cell, tips);
  bool missing_tip = false;
  for (int e = 0; e < 12; ++e)
    missing_tip |= edge_has_crossing(edge_code(tips.corners, e)) && !std::isfinite(leaf->tips[e].load());
  if (tips.defect || missing_tip) ++_defects;
  if (tip_flags().sharp_encode) sharp_encode_leaf(tips);
  return leaf;
}

}  // namespace cbtr
