#pragma once

// Where a leaf's material ends along an axis, against where a tool's
// surface begins. A leaf's material is fixed by its solid corners and the
// tips on its edges; a tip on an edge across the axis sits at that edge's
// place on the axis, which a solid corner of the edge already stands for, so
// only the corners and the tips on edges along the axis count.

#include <cstdint>

#include "cbtr/model/cell_t.h"
#include "cbtr/model/cube_node_t.h"

namespace cbtr {

// Whether no solid corner of word lies on the cell's face on the given side
// of axis: only then can a tool beyond that side miss the material.
bool material_clear_of_face(std::uint32_t word, int axis, bool high);

// Whether the material ends before a tool whose surface begins at tip `from`
// on the given side of axis: every solid corner strictly before it (a
// corner on the tool's surface counts as the tool's), every tip on an edge
// along the axis at or before it (a shared tip is a touch, not a cut), or
// strictly before it when touches count.
bool material_ends_before(std::uint32_t word, const cube_node_t::tips_t& tips, const cell_t& cell, int axis, bool high,
                          double from, bool touches_count);

}  // namespace cbtr
