#pragma once

// Building the cells of a stock (or of a tool) from exact triangles. A
// flat piece is a list whose triangles all lie in one plane, facing one way.

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "cbtr/build/edge_tips_t.h"
#include "cbtr/build/evaluate_cell.h"
#include "cbtr/build/hit_memo_t.h"
#include "cbtr/build/plane_classes_t.h"
#include "cbtr/inspect/defect_record_t.h"
#include "cbtr/model/cell_t.h"
#include "cbtr/model/cube_node_t.h"
#include "cbtr/step/tool_cells_t.h"

struct stop_token;

namespace cbtr {

class cell_tree_builder_t final : public tool_cells_t {
 public:
  // tris must outlive the builder. A stop requested on stop ends the build
  // at the next cell with nothing built.
  cell_tree_builder_t(const std::vector<tri_extension_t>& tris, std::uint32_t resolution, line_reuse_t reuse,
                      const stop_token* stop = nullptr);

  // Cells that could not be classified cleanly: conflicting corner states,
  // or a crossing edge without a tip. Open or self-overlapping soups make
  // them.
  std::size_t defects() const { return _defects; }
  // From now on each defective leaf is also recorded in sink, with its hits.
  void record_defects(std::vector<defect_record_t>* sink) { _defect_sink = sink; }
  // A child is dropped only when doubles prove it beyond rounding.
  child_lists_t distribute(const cell_t& cell, std::span<const std::uint32_t> list) const override;
  // The cell evaluated once, through the shared memo.
  edge_tips_t evaluate(const cell_t& cell, std::span<const std::uint32_t> list) override;
  bool flat_in(const cell_t& cell, std::span<const std::uint32_t> list) override;
  bool plane_only_touches(const cell_t& cell, std::span<const std::uint32_t> list) const override;
  // From the exact corners of the triangles nearest the extreme.
  std::optional<double> reach(int axis, bool highest, std::span<const std::uint32_t> list) const override;
  // Also counts the leaf as a defect if it is one.
  std::shared_ptr<cube_node_t> leaf(const cell_t& cell, const edge_tips_t& tips) override;
  bool stopped() const override;

 protected:
  std::shared_ptr<cube_node_t> leaf_over(const cell_t& cell, std::span<const std::uint32_t> list,
                                         const edge_tips_t& tips) override;

 private:
  void _record_defect(const cell_t& cell, std::span<const std::uint32_t> list);

  const std::vector<tri_extension_t>& _tris;
  const stop_token* _stop;
  hit_memo_t _memo;
  // Buffers reused from cell to cell; a builder works on one thread at a
  // time, and each cell is done with them before its children start.
  evaluation_scratch_t _scratch;
  mutable std::vector<std::uint8_t> _masks;
  plane_classes_t _planes;
  std::size_t _defects = 0;
  std::vector<defect_record_t>* _defect_sink = nullptr;
};

}  // namespace cbtr
