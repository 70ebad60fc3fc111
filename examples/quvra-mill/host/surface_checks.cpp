#include "host/surface_checks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <utility>
#include <vector>

namespace mill {

namespace {

using corner_t = std::array<double, 3>;
using edge_t = std::pair<corner_t, corner_t>;

corner_t corner(const double* rec, int i) { return {rec[3 * i], rec[3 * i + 1], rec[3 * i + 2]}; }

}  // namespace

std::size_t first_triangle_beyond(const double* tris, std::size_t count, double limit) {
  for (std::size_t t = 0; t < count; ++t)
    for (int i = 0; i < 9; ++i)
      if (!(std::abs(tris[12 * t + i]) <= limit)) return t;
  return count;
}

std::size_t open_edge_count(const double* tris, std::size_t count) {
  // Matched as multisets, so that an edge run twice one way needs two
  // twins; corners compare exactly, as the library joins them.
  std::vector<edge_t> forward;
  std::vector<edge_t> backward;
  forward.reserve(3 * count);
  backward.reserve(3 * count);
  for (std::size_t t = 0; t < count; ++t) {
    for (int i = 0; i < 3; ++i) {
      const corner_t a = corner(&tris[12 * t], i);
      const corner_t b = corner(&tris[12 * t], (i + 1) % 3);
      forward.emplace_back(a, b);
      backward.emplace_back(b, a);
    }
  }
  std::sort(forward.begin(), forward.end());
  std::sort(backward.begin(), backward.end());
  std::vector<edge_t> unmatched;
  std::set_difference(forward.begin(), forward.end(), backward.begin(), backward.end(), std::back_inserter(unmatched));
  return unmatched.size();
}

}  // namespace mill
