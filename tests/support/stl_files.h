#pragma once

// Writing STL files for tests and benchmarks. The library only reads STL,
// so the writers live here, on the test side.

#include <cstdint>
#include <string>
#include <vector>

#include "geom/stl3d_t.h"

namespace quvra_test {

// Binary STL of tris, with an 80-byte header (padded with blanks) and the
// given facet count (by default the true one).
void write_binary_stl(const std::string& path, const std::vector<geom::stl_tri_t>& tris,
                      const std::string& header = "quvra test");
std::string binary_stl_bytes(const std::vector<geom::stl_tri_t>& tris, const std::string& header, std::int64_t count);

// Text STL of tris, seven lines a facet inside "solid name" / "endsolid name".
void write_text_stl(const std::string& path, const std::vector<geom::stl_tri_t>& tris);
std::string text_stl(const std::vector<geom::stl_tri_t>& tris);

void write_file(const std::string& path, const std::string& bytes);

}  // namespace quvra_test
