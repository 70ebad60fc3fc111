#pragma once

// Numbering inside one cell.
//
// Children and corners share one 3-bit number: bit 0 is the high side in x,
// bit 1 in y, bit 2 in z. Corner k of a cell is the outer corner of child k;
// the cell centre is corner 7-k of child k.
//
// Edge e (0..11) runs along axis a = e >> 2 (0 x, 1 y, 2 z). Bit 0 of e puts
// it on the high side of axis (a+1) % 3, bit 1 on the high side of axis
// (a+2) % 3. Edges 0, 4 and 8 leave corner 0.
//
// A corner state takes two bits: unset 0, air 1, solid 2 (3: solid found in
// conflict while building). The corner word packs corner k into bits 2k and
// 2k+1. An edge code is state(high end) * 4 + state(low end): 5 and 10 are
// edges without a crossing, 6 (low solid) and 9 (high solid) carry a tip.

#include <array>
#include <cstdint>

namespace cbtr {

enum corner_state : std::uint32_t {
  corner_unset = 0,
  corner_air = 1,
  corner_solid = 2,
};

enum node_kind : std::int32_t {
  kind_unset = 0,
  kind_air = 1,
  kind_solid = 2,
  kind_leaf = 4,
  kind_branch = 8,
};

inline constexpr std::uint32_t corners_all_air = 0x5555;
inline constexpr std::uint32_t corners_all_solid = 0xAAAA;

inline constexpr std::uint32_t edge_code_air = 5;
inline constexpr std::uint32_t edge_code_low_solid = 6;
inline constexpr std::uint32_t edge_code_high_solid = 9;
inline constexpr std::uint32_t edge_code_solid = 10;

constexpr int edge_axis(int e) { return e >> 2; }

// The axes after axis a in right-handed order, (a + 1) % 3 and (a + 2) % 3,
// without the division that the modulo costs in the innermost loops.
constexpr int axis_after(int a) { return a == 2 ? 0 : a + 1; }
constexpr int axis_before(int a) { return a == 0 ? 2 : a - 1; }

// The ends of every edge, worked out once: they are read for each edge of
// every cell looked at, and the modulo of the rule is slow.
inline constexpr std::array<std::array<std::uint8_t, 2>, 12> edge_ends = [] {
  std::array<std::array<std::uint8_t, 2>, 12> ends{};
  for (int e = 0; e < 12; ++e) {
    const int a = edge_axis(e);
    const int low = ((e & 1) ? 1 << axis_after(a) : 0) | ((e & 2) ? 1 << axis_before(a) : 0);
    ends[e] = {static_cast<std::uint8_t>(low), static_cast<std::uint8_t>(low | (1 << a))};
  }
  return ends;
}();

constexpr int edge_low_corner(int e) { return edge_ends[e][0]; }
constexpr int edge_high_corner(int e) { return edge_ends[e][1]; }

constexpr std::uint32_t corner_of(std::uint32_t word, int k) { return (word >> (2 * k)) & 3u; }

constexpr std::uint32_t with_corner(std::uint32_t word, int k, std::uint32_t state) {
  return (word & ~(3u << (2 * k))) | (state << (2 * k));
}

constexpr std::uint32_t edge_code(std::uint32_t word, int e) {
  return corner_of(word, edge_high_corner(e)) * 4 + corner_of(word, edge_low_corner(e));
}

constexpr bool edge_has_crossing(std::uint32_t code) {
  return code == edge_code_low_solid || code == edge_code_high_solid;
}

// Air and solid swap; used when a tool is turned into its complement.
constexpr std::uint32_t inverted_corners(std::uint32_t word) { return ~word & 0xFFFF; }

// Byte with bit k set when corner k is solid: the row of the surface table.
constexpr std::uint8_t solid_corner_mask(std::uint32_t word) {
  std::uint8_t mask = 0;
  for (int k = 0; k < 8; ++k)
    if (corner_of(word, k) == corner_solid) mask |= static_cast<std::uint8_t>(1u << k);
  return mask;
}

constexpr bool is_uniform_corner_word(std::uint32_t word) {
  return word == 0 || word == corners_all_air || word == corners_all_solid;
}

}  // namespace cbtr
