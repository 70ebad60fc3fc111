#pragma once

// A cell against the triangles that reach it: the corner word and the tips
// of a leaf there. Decisions are exact; the hits come from the shared memo,
// so neighbouring cells agree on every corner they share.

#include <cstdint>
#include <span>
#include <vector>

#include "cbtr/build/edge_tips_t.h"
#include "cbtr/build/hit_memo_t.h"
#include "cbtr/model/cell_t.h"

namespace cbtr {

// Lists an evaluation fills and empties for every edge, kept by the caller
// so that their storage outlives one cell. One evaluation at a time.
struct evaluation_scratch_t {
  std::vector<tip_candidate_t> hits, group, first_touch;
  std::vector<std::uint16_t> near;
};

edge_tips_t evaluate_cell(const cell_t& cell, std::span<const std::uint32_t> list,
                          const std::vector<tri_extension_t>& tris, hit_memo_t& memo, evaluation_scratch_t& scratch);

// Corners that no crossing decided take the state of the corners next to
// them; a word with no corner known stays 0, a cell the surface never
// reached. Disagreeing neighbours raise the defect flag.
void fill_unset_corners(edge_tips_t& tips);

}  // namespace cbtr
