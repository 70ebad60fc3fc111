#pragma once

// Where gift wrapping starts when no face of the hull is known: the extreme
// point a (least x, then y, then z) and a hull edge a -> b from it. The
// plane through a b parallel to z supports the hull, so the first face
// found by rotating a plane about a b is a face of the hull.

#include <vector>

#include "geom/topo/hull_face.h"

namespace geom {

struct hull_start_t {
  bool found;  // false when all points lie on one vertical line
  hull_index_t a;
  hull_index_t b;
};

hull_start_t find_hull_start(const std::vector<hull_point_t>& pts);

}  // namespace geom
