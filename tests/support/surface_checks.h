#pragma once

// Checks that a triangle surface is closed and consistently oriented, and
// what it encloses. Edges of neighbouring triangles must cancel: exactly,
// as opposite edges with the same end points, or, where a large flat face
// meets smaller ones (a T-junction), as opposite coverage along one line.

#include <array>
#include <cstddef>
#include <vector>

namespace quvra_test {

using point3 = std::array<double, 3>;
using triangle3 = std::array<point3, 3>;

struct closure_t {
  std::size_t edges = 0;
  std::size_t exactly_matched = 0;    // directed edges cancelled by their exact reverse
  std::size_t open_lines = 0;         // lines along which coverage does not cancel
  double volume_about_origin = 0;     // signed, by the divergence theorem
  double volume_about_far_point = 0;  // the same about a distant reference point
};

closure_t check_closure(const std::vector<triangle3>& tris);

// Signed volume enclosed, taken about reference point r.
double enclosed_volume(const std::vector<triangle3>& tris, const point3& r);

}  // namespace quvra_test
