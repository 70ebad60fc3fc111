#pragma once

// The cells of a stick convex tool, evaluated in doubles: corners by the
// inside test, crossings by a bracketing search between an inside and an outside
// corner (a convex body meets an edge in one interval, so a crossing edge
// holds exactly one crossing). Every child the surface may reach gets all
// the bands; a child is dropped when it lies wholly inside (all corners in:
// the body is convex) or provably away from the body.

#include "cbtr/analytic/stick_convex.h"
#include "cbtr/step/tool_cells_t.h"

namespace cbtr {

class stick_cells_t final : public tool_cells_t {
 public:
  stick_cells_t(const stick_tool_t& tool, std::uint32_t resolution) : tool_cells_t(resolution), _tool(tool) {}

  child_lists_t distribute(const cell_t& cell, std::span<const std::uint32_t> list) const override;
  edge_tips_t evaluate(const cell_t& cell, std::span<const std::uint32_t> list) override;
  // Only a flat end crosses the cell's edges.
  bool flat_in(const cell_t& cell, std::span<const std::uint32_t> list) override;

 private:
  bool surface_may_reach(const cell_t& cell) const;
  double crossing(const cell_t& cell, int e, bool low_inside) const;

  const stick_tool_t& _tool;
};

}  // namespace cbtr
