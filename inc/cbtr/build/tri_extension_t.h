#pragma once

// One triangle of a soup or of a tool, with what the exact cell tests need
// computed once and shared read-only by every cell it reaches. Corners are
// exact; the doubles beside them only choose where to look, and every
// decision a double can't settle is taken on the fractions.

#include <array>

#include "geom/fraction_geom_util"

namespace cbtr {

using geom::fr;
using geom::vec3d;
using geom::vec3fr;

// Corners a, b, c counter-clockwise from outside, the exact normal (along
// cross(b - a, c - a); only its direction and sense count) and its unit form
// in doubles.
using exact_tri_t = geom::tri3<vec3fr, vec3fr, vec3d>;

inline const fr& component(const vec3fr& v, int axis) { return axis == 0 ? v.x : axis == 1 ? v.y : v.z; }
inline double component(const vec3d& v, int axis) { return axis == 0 ? v.x : axis == 1 ? v.y : v.z; }

struct tri_extension_t {
  explicit tri_extension_t(exact_tri_t t);

  const vec3fr& corner(int i) const { return i == 0 ? tri.a : i == 1 ? tri.b : tri.c; }
  // The normal vanishes exactly: the triangle has no area.
  bool has_no_area() const { return normal_sign == std::array<int, 3>{0, 0, 0}; }

  exact_tri_t tri;
  std::array<vec3d, 3> corner_d;   // the corners in doubles
  vec3d lo, hi;                    // box of corner_d
  vec3d normal_d;                  // the exact normal in doubles, not unit
  std::array<int, 3> normal_sign;  // exact sign of the normal on each axis
  fr plane_d;                      // normal . a
  double plane_dd;                 // plane_d in doubles
};

}  // namespace cbtr
