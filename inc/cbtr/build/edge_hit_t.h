#pragma once

// The meeting of one triangle with one grid line, shared by every cell that
// has that line among its edges, so that neighbouring cells agree on it.
//
//   0x001          the line pierces the triangle's interior
//   0x002 << k     the line meets edge k (corner k to corner k + 1)
//   0x010 << k     the line meets corner k
//   0x080          miss
//   0x100          the line lies in the triangle's plane; t0 <= t1 bound the
//                  overlap along the line, as doubles that order against
//                  every lattice value as the exact ends do
//   0x200          the line crosses the plane at t0
//
// Bits 12-13 and 14-15 keep the corner state decided for side 0 (towards
// the low end of the line) and side 1 (towards the high end), so that cells
// sharing the line and the corner decide alike.

#include <cstdint>
#include <limits>

namespace cbtr {

struct edge_hit_t {
  static constexpr std::uint32_t interior = 0x001;
  static constexpr std::uint32_t any_edge = 0x00E;
  static constexpr std::uint32_t any_vertex = 0x070;
  static constexpr std::uint32_t miss = 0x080;
  static constexpr std::uint32_t in_plane = 0x100;
  static constexpr std::uint32_t crossing = 0x200;

  std::uint32_t flags = 0;
  double t0 = std::numeric_limits<double>::quiet_NaN();
  double t1 = std::numeric_limits<double>::quiet_NaN();

  bool is_miss() const { return (flags & miss) != 0; }
  std::uint32_t verdict(int side) const { return (flags >> (12 + 2 * side)) & 3u; }
  void set_verdict(int side, std::uint32_t state) {
    flags = (flags & ~(3u << (12 + 2 * side))) | (state << (12 + 2 * side));
  }
  // The edge k or corner k of the triangle that the line meets, or -1.
  int edge_index() const;
  int vertex_index() const;
};

inline int edge_hit_t::edge_index() const {
  for (int k = 0; k < 3; ++k)
    if (flags & (0x002u << k)) return k;
  return -1;
}

inline int edge_hit_t::vertex_index() const {
  for (int k = 0; k < 3; ++k)
    if (flags & (0x010u << k)) return k;
  return -1;
}

}  // namespace cbtr
