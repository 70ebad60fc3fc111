#pragma once

// A cell that could not be classified cleanly while building a stock
// (conflicting corner states, or a crossing edge without a tip), with every
// meeting of its triangles with its edges, for a host to look into.

#include <array>
#include <cstdint>
#include <vector>

#include "cbtr/build/edge_hit_t.h"
#include "cbtr/build/tri_extension_t.h"

namespace cbtr {

struct defect_hit_t {
  const tri_extension_t* tri;
  std::uint32_t edge;  // the cell's edge number
  edge_hit_t hit;
};

struct defect_record_t {
  std::array<double, 6> box;
  int depth;
  std::vector<defect_hit_t> hits;
};

}  // namespace cbtr
