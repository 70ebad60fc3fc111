#include "cbtr/analytic/stick_cells.h"

#include <cmath>

namespace cbtr {

namespace {

geom::vec3d corner_point(const cell_t& cell, int k) {
  return {cell.face_model(0, k & 1), cell.face_model(1, (k >> 1) & 1), cell.face_model(2, (k >> 2) & 1)};
}

geom::vec3d with_axis(geom::vec3d p, int axis, double value) {
  (axis == 0 ? p.x : axis == 1 ? p.y : p.z) = value;
  return p;
}

}  // namespace

bool stick_cells_t::surface_may_reach(const cell_t& cell) const {
  bool all_inside = true;
  for (int k = 0; k < 8 && all_inside; ++k) all_inside = _tool.contains(corner_point(cell, k));
  if (all_inside) return false;
  const double width = cell.face_model(0, true) - cell.face_model(0, false);
  const geom::vec3d centre{lattice_to_model(cell.centre[0]), lattice_to_model(cell.centre[1]),
                           lattice_to_model(cell.centre[2])};
  return _tool.distance_below(centre) <= width * 0.5 * std::sqrt(3.0) * (1.0 + 1e-9);
}

child_lists_t stick_cells_t::distribute(const cell_t& cell, std::span<const std::uint32_t> list) const {
  std::uint8_t reached = 0;
  for (int k = 0; k < 8; ++k)
    if (surface_may_reach(cell.child(k))) reached |= static_cast<std::uint8_t>(1u << k);
  const std::vector<std::uint8_t> masks(list.size(), reached);
  return child_lists_t(list, masks);
}

// Regula falsi with the Illinois correction: it keeps the crossing
// bracketed like bisection, and converges in a handful of steps on the
// smooth pieces of the margin.
double stick_cells_t::crossing(const cell_t& cell, int e, bool low_inside) const {
  const int a = edge_axis(e);
  const geom::vec3d start = corner_point(cell, edge_low_corner(e));
  double inside = cell.face_model(a, false), outside = cell.face_model(a, true);
  if (!low_inside) std::swap(inside, outside);
  double f_in = _tool.inside_margin(with_axis(start, a, inside));
  double f_out = _tool.inside_margin(with_axis(start, a, outside));
  const double tolerance = 1e-13 * (1.0 + std::abs(inside));
  int kept_side = 0;
  for (int i = 0; i < 100 && std::abs(outside - inside) > tolerance; ++i) {
    double t = (inside * f_out - outside * f_in) / (f_out - f_in);
    if (!(std::min(inside, outside) < t && t < std::max(inside, outside))) t = 0.5 * (inside + outside);
    const double f = _tool.inside_margin(with_axis(start, a, t));
    if (f >= 0.0) {
      inside = t, f_in = f;
      if (kept_side == 1) f_out *= 0.5;
      kept_side = 1;
    } else {
      outside = t, f_out = f;
      if (kept_side == -1) f_in *= 0.5;
      kept_side = -1;
    }
  }
  return inside;
}

edge_tips_t stick_cells_t::evaluate(const cell_t& cell, std::span<const std::uint32_t>) {
  edge_tips_t tips;
  for (int k = 0; k < 8; ++k)
    tips.corners = with_corner(tips.corners, k, _tool.contains(corner_point(cell, k)) ? corner_solid : corner_air);
  for (int e = 0; e < 12; ++e) {
    const std::uint32_t code = edge_code(tips.corners, e);
    if (!edge_has_crossing(code)) continue;
    const double t = crossing(cell, e, code == edge_code_low_solid);
    tips.sides[e][0].value = t;
    tips.sides[e][1].value = t;
  }
  return tips;
}

bool stick_cells_t::flat_in(const cell_t& cell, std::span<const std::uint32_t> list) {
  const edge_tips_t tips = evaluate(cell, list);
  const double tolerance = 1e-9 * (cell.face_model(0, true) - cell.face_model(0, false));
  int codes = 0;
  for (int e = 0; e < 12; ++e) {
    const double t = tips.tip(e);
    if (std::isnan(t)) continue;
    codes |= _tool.surface_code(with_axis(corner_point(cell, edge_low_corner(e)), edge_axis(e), t), tolerance);
  }
  return codes == 1 || codes == 4;
}

}  // namespace cbtr
