#pragma once

// Deciding a corner from crossings that share one point of the line: the
// line meets the surface on a triangle's edge or corner, several triangles
// meet it there, and no single normal tells the side (see judge_value.h).
// The verdict is stored in every hit of the group, so that the cells
// sharing the line decide alike.

#include <cstdint>
#include <span>

#include "cbtr/build/edge_tips_t.h"
#include "cbtr/build/projected_orientation.h"

namespace cbtr {

// The verdict of a group whose triangles only touch the line: the surface
// does not cross it there, and the next crossing decides.
inline constexpr std::uint32_t touch_verdict = 3;

// Looking from a crossing along the line towards the end of `side` (side 0:
// towards -axis, side 1: towards +axis), the corner there is air when the
// normal points that way and solid when it points back; a normal across the
// line gives zero_state.
std::uint32_t state_from_normal(const tri_extension_t& tri, int axis, int side, std::uint32_t zero_state);

// Whether the line, moved off its point by the infinitesimal step of the
// judge values, passes through the triangle.
bool meets_moved_line(const tri_extension_t& tri, const grid_line_t& line);

// The state a group of crossings at one point gives the corner of `side`:
// among the triangles the moved line passes through, the one it meets
// nearest that corner decides by its normal; touch_verdict when it passes
// through none. `winner` receives the deciding triangle, if any.
std::uint32_t resolve_group(std::span<const tip_candidate_t> group, const grid_line_t& line, int side,
                            const tri_extension_t*& winner);

// The state along the line next to a point where the surface only touches
// it, looking towards the corner of `side`: where every triangle there says
// the same by its normal, that; for two triangles through one edge that
// disagree, the fold they make (at a convex fold the line runs in air if
// either says air, at a concave one only if both do). 0 when the triangles
// of a vertex disagree.
std::uint32_t touch_state(std::span<const tip_candidate_t> group, int axis, int side);

}  // namespace cbtr
