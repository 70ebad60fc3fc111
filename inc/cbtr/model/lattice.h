#pragma once

// The fixed lattice under every stock.
//
// Lattice coordinates run from 0 to 2^27 on each axis; coordinate i is the
// model coordinate i / 1024 - 65536, so the workspace is the cube from -65536
// to +65536 with its centre at lattice point 2^26. The root cell (depth 0)
// has half-width 2^26 steps; a cell at depth d has half-width 2^(26-d), and
// its centre coordinates have bit 26-d set and every lower bit clear, which
// is how a cell's depth is told from its centre without being stored.
// Depth 26 (half-width one step) is the finest cell there can be.

#include <bit>
#include <cstdint>

namespace cbtr {

inline constexpr int max_depth = 26;
inline constexpr std::uint32_t lattice_centre = 1u << 26;
inline constexpr double lattice_step = 0.0009765625;  // 1/1024
inline constexpr double lattice_origin = -65536.0;

inline double lattice_to_model(std::uint32_t i) { return i * lattice_step + lattice_origin; }

// Half-width in lattice steps of a cell at depth d.
inline std::uint32_t half_width(int depth) { return 1u << (max_depth - depth); }

// Depth of the cell whose centre has lattice coordinate x on any axis.
inline int depth_of_centre(std::uint32_t x) { return max_depth - std::countr_zero(x); }

// Centre coordinate of the high or low child of a cell centred at c, depth d.
inline std::uint32_t child_centre(std::uint32_t c, int depth, bool high) {
  const std::uint32_t q = 1u << (max_depth - 1 - depth);
  const std::uint32_t m = ~(1u << (max_depth - depth));
  return high ? (c | q) : ((c | q) & m);
}

// Model coordinate of c + offset, computed as a signed 32-bit sum converted
// to double, so that every cell corner is exact.
inline double lattice_offset_to_model(std::uint32_t c, std::int32_t offset) {
  const std::int32_t i = static_cast<std::int32_t>(c) + offset;
  return static_cast<double>(i) * lattice_step + lattice_origin;
}

// Edge length of a cell at depth `resolution`, in model units: 2^(17 - r),
// and the whole workspace for resolution 0 (not set).
double grid_width(std::uint32_t resolution);

// The depth whose cells are no wider than w, at most 26. The small bias
// keeps an exact power of two from rounding up to the next depth.
std::int32_t resolution_from_width(double w);

}  // namespace cbtr
