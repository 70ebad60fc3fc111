#include "milling/engagement_t.h"

#include <algorithm>
#include <numbers>

namespace mech {

namespace {

// Ranges cut from neighbouring triangles meet at angles computed from each
// side; closer than this they touch.
constexpr double touching = 1e-9;

void insert_plain(std::vector<angle_range_t>& ranges, angle_range_t r) {
  // The first range that does not end before r starts, and the first that
  // starts after r ends: everything between touches r and is swallowed.
  auto first = std::lower_bound(ranges.begin(), ranges.end(), r.start,
                                [](const angle_range_t& a, double s) { return a.end + touching < s; });
  auto last = std::upper_bound(first, ranges.end(), r.end,
                               [](double e, const angle_range_t& a) { return e + touching < a.start; });
  if (first != last) {
    r.start = std::min(r.start, first->start);
    r.end = std::max(r.end, std::prev(last)->end);
  }
  ranges.insert(ranges.erase(first, last), r);
}

}  // namespace

void insert_range(std::vector<angle_range_t>& ranges, double start, double end) {
  if (start > end) {
    insert_plain(ranges, {start, std::numbers::pi});
    insert_plain(ranges, {-std::numbers::pi, end});
  } else {
    insert_plain(ranges, {start, end});
  }
}

bool in_ranges(const std::vector<angle_range_t>& ranges, double angle) {
  auto it =
      std::lower_bound(ranges.begin(), ranges.end(), angle, [](const angle_range_t& a, double v) { return a.end < v; });
  return it != ranges.end() && it->start <= angle;
}

}  // namespace mech
