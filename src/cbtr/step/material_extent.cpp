#include "cbtr/step/material_extent.h"

#include "cbtr/model/cell_numbering.h"

namespace cbtr {

namespace {

// a comes before b, seen from the low side of the axis or from the high.
bool before(double a, double b, bool high) { return high ? a > b : a < b; }

}  // namespace

bool material_clear_of_face(std::uint32_t word, int axis, bool high) {
  for (int k = 0; k < 8; ++k)
    if (((k >> axis) & 1) == static_cast<int>(high) && corner_of(word, k) == corner_solid) return false;
  return true;
}

bool material_ends_before(std::uint32_t word, const cube_node_t::tips_t& tips, const cell_t& cell, int axis, bool high,
                          double from, bool touches_count) {
  for (int k = 0; k < 8; ++k)
    if (corner_of(word, k) == corner_solid && !before(cell.face_model(axis, (k >> axis) & 1), from, !high))
      return false;
  for (int e = 4 * axis; e < 4 * axis + 4; ++e)
    if (edge_has_crossing(edge_code(word, e))) {
      const double tip = tips[e].load();
      if (before(from, tip, !high) || (touches_count && tip == from)) return false;
    }
  return true;
}

}  // namespace cbtr
