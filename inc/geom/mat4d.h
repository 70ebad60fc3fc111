#pragma once

// A pose: sixteen consecutive doubles. A point maps as
//   x' = m[0]x + m[4]y + m[8]z  + m[12]
//   y' = m[1]x + m[5]y + m[9]z  + m[13]
//   z' = m[2]x + m[6]y + m[10]z + m[14]
// so the translation stands in elements 12, 13, 14: column-major for column
// vectors, or rows for row vectors. A product a * b applies a first, then b.

#include <array>

#include "geom/vec3.h"

namespace geom {

struct mat4d {
  std::array<double, 16> m;

  static mat4d identity() { return {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}}; }

  vec3d apply(const vec3d& p) const {
    return {m[0] * p.x + m[4] * p.y + m[8] * p.z + m[12], m[1] * p.x + m[5] * p.y + m[9] * p.z + m[13],
            m[2] * p.x + m[6] * p.y + m[10] * p.z + m[14]};
  }
};
static_assert(sizeof(mat4d) == 16 * sizeof(double), "poses cross the boundary as doubles");

// a * b: a first, then b.
mat4d operator*(const mat4d& a, const mat4d& b);

}  // namespace geom
