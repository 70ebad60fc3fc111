#pragma once

// What a tool makes of the lattice's cells, top down: each cell hands the
// tool's pieces (triangles, or profile segments of an analytic tool) to the
// children they may reach, and a child becomes a leaf at the finest depth,
// or earlier when the tool's surface in it is one plane that crosses its
// edges: a flat face thus makes large leaves, and a cell is never finer than
// it needs to be. Cells whose corners all agree are not stored at all (null
// slots); their state is read from their neighbours' corners.

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "cbtr/build/child_lists_t.h"
#include "cbtr/build/edge_tips_t.h"
#include "cbtr/model/cell_t.h"
#include "cbtr/model/cube_node_t.h"

namespace cbtr {

class tool_cells_t {
 public:
  explicit tool_cells_t(std::uint32_t resolution) : _resolution(resolution) {}
  virtual ~tool_cells_t() = default;
  tool_cells_t(const tool_cells_t&) = delete;
  tool_cells_t& operator=(const tool_cells_t&) = delete;

  // The pieces of list that may reach each child of cell. Conservative: a
  // child is dropped only where the tool's surface surely misses it.
  virtual child_lists_t distribute(const cell_t& cell, std::span<const std::uint32_t> list) const = 0;
  // The cell's corners and edge crossings.
  virtual edge_tips_t evaluate(const cell_t& cell, std::span<const std::uint32_t> list) = 0;
  // The tool's surface in cell is a single plane: a leaf holds it exactly.
  virtual bool flat_in(const cell_t& cell, std::span<const std::uint32_t> list) = 0;
  // For a flat list: its plane leaves every corner of cell on one side or on
  // it, so it never enters the cell. False where the tool can't tell.
  virtual bool plane_only_touches(const cell_t& /*cell*/, std::span<const std::uint32_t> /*list*/) const {
    return false;
  }
  virtual bool stopped() const { return false; }
  // The tip a crossing at the extreme point of the pieces of list along axis
  // gets (their highest point, or their lowest): no crossing of theirs with
  // a line along axis lies beyond it. Nothing where the tool can't tell.
  virtual std::optional<double> reach(int /*axis*/, bool /*highest*/, std::span<const std::uint32_t> /*list*/) const {
    return std::nullopt;
  }

  // The subtree of cell over the pieces of list: a branch, or null when
  // every child is uniform (or the build was stopped).
  std::shared_ptr<cube_node_t> build(const cell_t& cell, std::span<const std::uint32_t> list);
  // What the pieces make of one cell: a leaf at the finest depth or over
  // one plane, a subtree otherwise, null where the cell is uniform.
  std::shared_ptr<cube_node_t> cell(const cell_t& cell, std::span<const std::uint32_t> list);
  // A leaf of an evaluation.
  virtual std::shared_ptr<cube_node_t> leaf(const cell_t& cell, const edge_tips_t& tips);

 protected:
  // The leaf that cell() makes; a tool with its own bookkeeping of leaves
  // (defects) extends this.
  virtual std::shared_ptr<cube_node_t> leaf_over(const cell_t& cell, std::span<const std::uint32_t> /*list*/,
                                                 const edge_tips_t& tips) {
    return leaf(cell, tips);
  }

  std::uint32_t _resolution;
};

}  // namespace cbtr
