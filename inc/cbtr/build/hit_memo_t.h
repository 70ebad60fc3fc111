#pragma once

// Meetings of triangles with grid lines, each computed once per build or
// step and shared by every cell that has the line among its edges: cells on
// both sides of a line read one verdict, so a corner they share gets one
// state. Misses are kept too, so a line is never cut twice.

#include <cstdint>
#include <vector>

#include "cbtr/build/edge_hit_t.h"
#include "cbtr/build/tri_extension_t.h"
#include "common/chunked_store.h"
#include "common/pointer_hash_set.h"

namespace cbtr {

// How often cells come back to one triangle's lines. A tool's few triangles
// meet the same lines in cell after cell and level after level; a stock
// soup's many triangles meet most of theirs once or twice.
enum class line_reuse_t { rare, frequent };

class hit_memo_t {
 public:
  // A triangle meets about a dozen lines that cells look along, and where
  // misses are kept as many again; room for most of them up front spares
  // the table its early regrowths.
  hit_memo_t(const std::vector<tri_extension_t>& tris, line_reuse_t reuse)
      : _tris(tris), _reuse(reuse), _index((reuse == line_reuse_t::frequent ? 16 : 8) * tris.size()) {}

  // Triangle tri against the line along axis through lattice coordinates cu
  // and cv on axes axis + 1 and axis + 2, or null where it misses. The
  // pointer stays valid for the memo's life.
  edge_hit_t* meeting(std::uint32_t tri, int axis, std::uint32_t cu, std::uint32_t cv);

 private:
  struct record_t {
    std::uint64_t line;
    std::uint32_t tri;
    edge_hit_t hit;
  };

  const std::vector<tri_extension_t>& _tris;
  line_reuse_t _reuse;
  common::chunked_store<record_t> _records;
  common::pointer_hash_set<record_t> _index;
};

}  // namespace cbtr
