#pragma once

// Binary STL out of the library's triangle records (twelve doubles: corners
// a, b, c, then the normal), for viewers and CAM systems that read the cut
// stock.

#include <string>
#include <vector>

namespace mill {

// Writes tris to path, created or truncated: an 80-byte header holding
// title, the count, then per triangle the normal and the three corners as
// little-endian 32-bit floats. Throws std::runtime_error naming the path when
// the file cannot be written.
void write_binary_stl(const std::string& path, const std::vector<double>& tris, const std::string& title);

}  // namespace mill
