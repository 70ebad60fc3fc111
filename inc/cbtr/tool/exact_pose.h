#pragma once

// A pose in fractions, and the one place where pose and vertex doubles
// become exact for the tool volumes.
//
// The eight rotation terms 0, 1, 2, 4, 5, 6, 8, 9 go on a grid of 0.0001;
// the rest, element 10 included, on the model's resolution. Element 10
// sitting on the coarser grid is a long-standing asymmetry that results
// depend on, so it stays. Rotations are therefore only kept to four
// decimals, and the exact matrix is in general not orthonormal: the exact
// arithmetic downstream needs consistency, not orthonormality.

#include <array>

#include "geom/fraction_geom_util"
#include "geom/mat4d.h"

namespace cbtr {

struct exact_pose_t {
  std::array<geom::fr, 16> m;
};

exact_pose_t to_exact_pose(const geom::mat4d& pose, double resolution);

// The pose applied to a point: rotation block and translation. Both results
// come packed.
geom::vec3fr transform(const exact_pose_t& pose, const geom::vec3fr& p);
// The rotation block alone, for directions.
geom::vec3fr rotate(const exact_pose_t& pose, const geom::vec3fr& v);
// Whether the rotation block is other than the identity.
bool turns(const exact_pose_t& pose);
// Elements 12, 13, 14.
geom::vec3fr translation_of(const exact_pose_t& pose);

// Each coordinate as the simplest fraction within resolution of it.
geom::vec3fr snap(const geom::vec3d& p, double resolution);

}  // namespace cbtr
