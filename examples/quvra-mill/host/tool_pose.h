#pragma once

// Poses of the tool as the library takes them: sixteen doubles, column-major,
// a point p mapping to R p + t with the translation t in elements 12 to 14.
// The tool's own frame has its tip at the origin and its axis along +z.

#include <array>

#include "interp/move_t.h"

namespace mill {

using pose_t = std::array<double, 16>;

// The pose that puts the tip at tip and the axis along axis (a unit vector,
// as the interpreter gives it). The rotation is the shortest one from +z, so
// (0, 0, 1) gives the identity bit for bit: the library tells a rotating move
// from a translation by comparing rotations exactly.
pose_t tool_pose(const vec3_t& tip, const vec3_t& axis);

}  // namespace mill
