#include "cbtr/hit_memo_t.h"

#include "cbtr/cut_edge_line.h"
#include "cbtr/lattice.h"

namespace cbtr {

edge_hit_t& hit_memo_t::hit(std::uint32_t tri, int axis, std::uint32_t cu, std::uint32_t cv) {
  // Lattice coordinates take 28 bits each.
  const std::uint64_t line = (std::uint64_t(axis) << 56) | (std::uint64_t(cu) << 28) | cv;
  const std::size_t h = static_cast<std::size_t>(line * 0x9e3779b97f4a7c15ULL) ^ (tri * 0xff51afd7ed558ccdULL);
  const auto same = [&](const record_t& r) { return r.line == line && r.tri == tri; };
  if (record_t* found = _index.find(h, same)) return found->hit;
  record_t& r = _records.emplace_back(
      record_t{line, tri, cut_edge_line(_tris[tri], axis, lattice_to_model(cu), lattice_to_model(cv))});
  _index.insert(&r, h);
  return r.hit;
}

}  // namespace cbtr
