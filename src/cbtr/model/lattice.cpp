#include "cbtr/model/lattice.h"

#include <array>
#include <cmath>

namespace cbtr {

namespace {

// 2^(17 - r) for r = 0..27: row 0, "not set", is the whole workspace.
constexpr std::array<double, 28> powers_of_two = [] {
  std::array<double, 28> t{};
  double w = 131072.0;
  for (double& row : t) {
    row = w;
    w /= 2;
  }
  return t;
}();

}  // namespace

double grid_width(std::uint32_t resolution) {
  return resolution < powers_of_two.size() ? powers_of_two[resolution] : powers_of_two.back();
}

std::int32_t resolution_from_width(double w) {
  const double ratio = 134217728.0 / (w * 1024.0) - 1e-7;
  // From about 1.3e12 up the bias leaves no ratio: such widths are the root's.
  if (ratio <= 0) return 0;
  const double levels = std::ceil(std::log2(ratio));
  // Widths at or below the finest cell, and widths that are not numbers,
  // end at the finest depth rather than overflowing the conversion.
  if (!(levels < max_depth)) return max_depth;
  // A width above the root's is the root's.
  if (levels < 0) return 0;
  return static_cast<std::int32_t>(levels);
}

}  // namespace cbtr
