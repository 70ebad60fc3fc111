#pragma once

// Directions move with a pose's rotation block alone: a normal or an edge
// vector must not pick up the translation.

#include "geom/mat4d.h"

namespace cbtr {

inline geom::vec3d rotated(const geom::mat4d& pose, const geom::vec3d& v) {
  return {pose.m[0] * v.x + pose.m[4] * v.y + pose.m[8] * v.z, pose.m[1] * v.x + pose.m[5] * v.y + pose.m[9] * v.z,
          pose.m[2] * v.x + pose.m[6] * v.y + pose.m[10] * v.z};
}

}  // namespace cbtr
