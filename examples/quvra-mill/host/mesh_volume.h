#pragma once

// The volume a closed surface encloses, from the library's triangle records.
// The library has no volume query, so the host measures the stock from its
// surface before and after the cut.

#include <vector>

namespace mill {

// Sum of the signed tetrahedra from the origin to each triangle (twelve
// doubles a record, corners first): positive for a closed surface whose
// triangles run counter-clockwise seen from outside.
double enclosed_volume(const std::vector<double>& tris);

}  // namespace mill
