#pragma once

// The point of a design triangle nearest to a lattice point, by exact
// integer tests, and its squared distance as an exact fraction.
//
// Feature codes: 0 the face; 1, 2, 3 the edges p0-p1, p1-p2, p2-p0; 4, 5, 6
// the corners p0, p1, p2. The kind of a code is 0 face, 1 edge, 2 corner.

#include <cstdint>

#include "cbtr/compare/design_t.h"

namespace cbtr {

struct feature_hit_t {
  std::uint32_t tri;  // index into the design
  int code;
  // Squared distance num / den in squared lattice steps. For the face num
  // holds n . (q - p0), whose square is the numerator: squared, it could
  // pass 128 bits.
  __int128 num;
  __int128 den;
  double d2;  // the same, rounded
};

inline int feature_kind(int code) { return code == 0 ? 0 : code <= 3 ? 1 : code <= 6 ? 2 : 3; }

feature_hit_t nearest_feature(const design_t& design, std::uint32_t tri, const lattice_point_t& q);

// Exact order of two squared distances: negative, zero or positive as a's
// is less than, equal to or greater than b's.
int compare_d2(const feature_hit_t& a, const feature_hit_t& b);

// n . (q - p0) of the triangle: positive when q lies on the side its normal
// points to.
__int128 plane_side(const lattice_tri_t& t, const lattice_point_t& q);

}  // namespace cbtr
