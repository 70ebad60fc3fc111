#pragma once

// The points of a hull under construction in boxes nested by halves, so
// that the wrapping can pass over whole boxes that lie behind the plane it
// turns: the plane it ends on supports the hull, and almost every point lies
// far behind it.

#include <cstdint>
#include <vector>

#include "geom/topo/hull_point_t.h"

namespace geom {

class hull_point_tree_t {
 public:
  explicit hull_point_tree_t(const std::vector<hull_point_t>& pts);

  // Calls visit(p) for each point p in the boxes that skip(lo, hi) does not
  // pass over, boxes nearer to `towards` first; skipped(lo, hi) hears of each
  // box passed over. skip is asked again for every box, so it may change its
  // mind as visit learns.
  template <class Skip, class Skipped, class Visit>
  void walk(Skip&& skip, Skipped&& skipped, Visit&& visit, const vec3d& towards) const {
    walk_from(0, skip, skipped, visit, towards);
  }

 private:
  struct box_t {
    vec3d lo, hi;
    std::uint32_t begin, end;          // the box's points in _order
    std::int32_t low = -1, high = -1;  // children; -1 for a leaf
  };

  std::int32_t build(std::uint32_t begin, std::uint32_t end);

  template <class Skip, class Skipped, class Visit>
  void walk_from(std::int32_t at, Skip& skip, Skipped& skipped, Visit& visit, const vec3d& towards) const {
    const box_t& box = _boxes[static_cast<std::size_t>(at)];
    if (skip(box.lo, box.hi)) {
      skipped(box.lo, box.hi);
      return;
    }
    if (box.low < 0) {
      for (std::uint32_t i = box.begin; i < box.end; ++i) visit(_order[i]);
      return;
    }
    const bool high_first = distance2(_boxes[static_cast<std::size_t>(box.high)], towards) <
                            distance2(_boxes[static_cast<std::size_t>(box.low)], towards);
    walk_from(high_first ? box.high : box.low, skip, skipped, visit, towards);
    walk_from(high_first ? box.low : box.high, skip, skipped, visit, towards);
  }

  static double distance2(const box_t& box, const vec3d& p);

  const std::vector<hull_point_t>& _pts;
  std::vector<std::uint32_t> _order;
  std::vector<box_t> _boxes;
};

}  // namespace geom
