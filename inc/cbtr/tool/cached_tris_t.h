#pragma once

// A tool volume ready for the cube tree: exact triangles, degenerate ones
// filtered out and the rest digested once into the records the cell tests
// read, so that one volume can be applied to several trees, or to many
// nodes, without repeating the work. Immutable after construction.

#include <cstddef>
#include <vector>

#include "cbtr/build/tri_extension_t.h"
#include "cbtr/tool/tool_tri.h"

namespace cbtr {

class cached_tris_t {
 public:
  // Takes the triangles of a sweep builder and leaves tris empty and freed.
  // Keeps their order; drops those whose normal is exactly zero.
  explicit cached_tris_t(tool_tris_t&& tris);

  std::size_t size() const { return _tris.size(); }
  const std::vector<tri_extension_t>& tris() const { return _tris; }

 private:
  std::vector<tri_extension_t> _tris;
};

}  // namespace cbtr
