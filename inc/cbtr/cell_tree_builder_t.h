#pragma once

// Building the cells of a stock (or of a tool) from exact triangles, top
// down: each cell hands its triangles to the children they may reach, and a
// child becomes a leaf at the finest depth, or earlier when all of its
// triangles lie in one plane that crosses its edges: a flat face thus makes
// large leaves, and a cell is never finer than it needs to be. Cells whose
// corners all agree are not stored at all (null slots).

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "cbtr/cell_t.h"
#include "cbtr/cube_node_t.h"
#include "cbtr/defect_record_t.h"
#include "cbtr/edge_tips_t.h"
#include "cbtr/hit_memo_t.h"

struct stop_token;

namespace cbtr {

class cell_tree_builder_t {
 public:
  // tris must outlive the builder. A stop requested on stop ends the build
  // at the next cell with nothing built.
  cell_tree_builder_t(const std::vector<tri_extension_t>& tris, std::uint32_t resolution,
                      const stop_token* stop = nullptr);

  // The subtree of cell over the triangles of list: a branch, or null when
  // every child is uniform (or the build was stopped).
  std::shared_ptr<cube_node_t> build(const cell_t& cell, std::span<const std::uint32_t> list);

  // Cells that could not be classified cleanly: conflicting corner states,
  // or a crossing edge without a tip. Open or self-overlapping soups make
  // them.
  std::size_t defects() const { return _defects; }
  // From now on each defective leaf is also recorded in sink, with its hits.
  void record_defects(std::vector<defect_record_t>* sink) { _defect_sink = sink; }
  bool stopped() const;

  // The triangles of list that may reach each child of cell. Conservative:
  // a child is dropped only when doubles prove it beyond rounding.
  std::array<std::vector<std::uint32_t>, 8> distribute(const cell_t& cell,
                                                       std::span<const std::uint32_t> list) const;

  // What the triangles make of one cell: a leaf at the finest depth or over
  // one plane, a subtree otherwise, null where the cell is uniform.
  std::shared_ptr<cube_node_t> cell(const cell_t& cell, std::span<const std::uint32_t> list);
  // The cell evaluated once, through the shared memo.
  edge_tips_t evaluate(const cell_t& cell, std::span<const std::uint32_t> list);
  // A leaf of that evaluation; counts it as a defect if it is one.
  std::shared_ptr<cube_node_t> leaf(const cell_t& cell, const edge_tips_t& tips);
  // All triangles of list share one normal: a flat piece.
  bool in_one_plane(std::span<const std::uint32_t> list) const;

 private:
  void _record_defect(const cell_t& cell, std::span<const std::uint32_t> list);

  const std::vector<tri_extension_t>& _tris;
  std::uint32_t _resolution;
  const stop_token* _stop;
  hit_memo_t _memo;
  std::size_t _defects = 0;
  std::vector<defect_record_t>* _defect_sink = nullptr;
};

}  // namespace cbtr
