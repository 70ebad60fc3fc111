#include "cbtr/build/hit_memo_t.h"

#include "cbtr/build/cut_edge_line.h"
#include "cbtr/build/projected_orientation.h"
#include "cbtr/model/lattice.h"

namespace cbtr {

edge_hit_t* hit_memo_t::meeting(std::uint32_t tri, int axis, std::uint32_t cu, std::uint32_t cv) {
  // Most triangles near a line miss it, and doubles prove it. Where lines
  // come back often, the proof is taken once and remembered with the other
  // verdicts; where they rarely do, remembering would only fill the memo.
  const tri_extension_t& t = _tris[tri];
  const double u = lattice_to_model(cu), v = lattice_to_model(cv);
  const bool remember_misses = _reuse == line_reuse_t::frequent;
  if (!remember_misses && certainly_misses(t, axis, u, v)) return nullptr;
  // Lattice coordinates take 28 bits each.
  const std::uint64_t line = (std::uint64_t(axis) << 56) | (std::uint64_t(cu) << 28) | cv;
  const std::size_t h = static_cast<std::size_t>(line * 0x9e3779b97f4a7c15ULL) ^ (tri * 0xff51afd7ed558ccdULL);
  record_t* r = _index.find(h, [&](const record_t& x) { return x.line == line && x.tri == tri; });
  if (!r) {
    const bool misses = remember_misses && certainly_misses(t, axis, u, v);
    r = &_records.emplace_back(
        record_t{line, tri, misses ? edge_hit_t{edge_hit_t::miss} : cut_edge_line(t, axis, u, v)});
    _index.insert(r, h);
  }
  return r->hit.is_miss() ? nullptr : &r->hit;
}

}  // namespace cbtr
