#pragma once

// Where a grid line along `axis`, through (u, v) on axes axis + 1 and
// axis + 2, passes a triangle's projected edges. Exact: doubles decide
// within a proven error bound, fractions decide the rest.

#include "cbtr/build/tri_extension_t.h"
#include "cbtr/model/cell_numbering.h"

namespace cbtr {

struct grid_line_t {
  grid_line_t(int axis, double u_value, double v_value)
      : a(axis), a1(axis_after(axis)), a2(axis_before(axis)), u(u_value), v(v_value) {}

  // The place as fractions, made only on the exact paths.
  fr uf() const;
  fr vf() const;

  int a, a1, a2;
  double u, v;
};

// Sign of cross(P1 - P0, Q - P0) for the projected edge k (corner k to
// corner k + 1) and the line's point Q: positive when Q lies on the left.
int projected_orient(const tri_extension_t& t, int k, const grid_line_t& line);

// True when doubles alone prove that the line along axis through (u, v)
// passes outside the triangle. False says nothing: the line may still miss.
bool certainly_misses(const tri_extension_t& t, int axis, double u, double v);

}  // namespace cbtr
