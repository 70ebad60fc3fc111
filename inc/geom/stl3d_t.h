#pragma once

// The triangle soup: independent triangles in double precision, in the order
// of their source, with no shared vertices and no adjacency. Nothing here
// normalises or recomputes a normal, welds vertices or drops degenerate
// triangles: later stages decide what a soup means.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace geom {

// Twelve doubles: vertices first, then the normal exactly as the source gave
// it. The boundary hands arrays of these out as plain doubles.
struct stl_tri_t {
  std::array<double, 3> a;
  std::array<double, 3> b;
  std::array<double, 3> c;
  std::array<double, 3> normal;
};
static_assert(sizeof(stl_tri_t) == 12 * sizeof(double), "records cross the boundary as doubles");

enum class stl_status : std::int32_t {
  ok = 0,
  open_failed = 1,
  malformed = 2,
};

struct stl3d_t {
  std::vector<stl_tri_t> tris;

  stl3d_t() = default;
  // Copies count records of twelve doubles; the capacity is exactly count.
  stl3d_t(const double* records, std::size_t count);
  // Reads a file. A failed read is not an error of construction: the mesh
  // holds what was read, and a warning names the status and the path.
  explicit stl3d_t(const std::string& path);

  // Appends the triangles of a text or binary STL file.
  stl_status read_file(const std::string& path);

  // Grows box (min xyz, max xyz) over every vertex. NaN coordinates fail
  // both comparisons and leave the box as it stands.
  void expand_to_box3d(double* box) const;
};

}  // namespace geom
