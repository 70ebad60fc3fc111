#pragma once

// Where the tool touches the stock during one move, as the physics sees it:
// for each height of the flank (side slices, ascending z) and each ring of
// the bottom (ascending radius), the angles about the tool axis at which the
// surface is in contact. Angles are radians in [-pi, pi); the ranges of a
// slice are sorted and do not overlap. Immutable once built.

#include <cstdint>
#include <vector>

namespace mech {

struct angle_range_t {
  double start;
  double end;
};

struct engagement_slice_t {
  double pos;   // height z of a side slice, radius r of a bottom ring
  double step;  // the slice's thickness dz, or the ring's width dr
  std::vector<angle_range_t> ranges;
};

struct engagement_t {
  std::int32_t tag = 0;  // the host's, carried along unread
  double ring_step = 0;
  std::vector<engagement_slice_t> bottom;
  std::vector<engagement_slice_t> side;
};

// Adds [start, end] to a slice's sorted ranges. A range with start > end
// wraps over pi and goes in as [start, pi) and [-pi, end]; a range joins
// every range it touches.
void insert_range(std::vector<angle_range_t>& ranges, double start, double end);

// Whether angle lies in one of the ranges, ends included.
bool in_ranges(const std::vector<angle_range_t>& ranges, double angle);

}  // namespace mech
