#pragma once

// What the host asks of a stock surface before the library builds from it:
// that it lies where a machine can reach, and that it closes.

#include <cstddef>

namespace mill {

// Index of the first triangle record (twelve doubles, corners first) with a
// corner coordinate beyond +-limit or not finite; count when there is none.
std::size_t first_triangle_beyond(const double* tris, std::size_t count, double limit);

// Directed edges with no reversed twin. A closed surface whose triangles
// all face outward has none: each edge is run once each way.
std::size_t open_edge_count(const double* tris, std::size_t count);

}  // namespace mill
