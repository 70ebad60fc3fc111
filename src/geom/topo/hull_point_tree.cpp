#include "geom/topo/hull_point_tree.h"

#include <algorithm>
#include <numeric>

namespace geom {

namespace {

constexpr std::uint32_t leaf_size = 16;

double axis_of(const vec3d& v, int a) { return a == 0 ? v.x : a == 1 ? v.y : v.z; }

}  // namespace

hull_point_tree_t::hull_point_tree_t(const std::vector<hull_point_t>& pts) : _pts(pts), _order(pts.size()) {
  std::iota(_order.begin(), _order.end(), 0u);
  _boxes.reserve(2 * pts.size() / leaf_size + 2);
  if (!pts.empty()) build(0, static_cast<std::uint32_t>(pts.size()));
}

std::int32_t hull_point_tree_t::build(std::uint32_t begin, std::uint32_t end) {
  const auto at = static_cast<std::int32_t>(_boxes.size());
  box_t box{_pts[_order[begin]].approx, _pts[_order[begin]].approx, begin, end};
  for (std::uint32_t i = begin; i < end; ++i) {
    const vec3d& p = _pts[_order[i]].approx;
    box.lo = {std::min(box.lo.x, p.x), std::min(box.lo.y, p.y), std::min(box.lo.z, p.z)};
    box.hi = {std::max(box.hi.x, p.x), std::max(box.hi.y, p.y), std::max(box.hi.z, p.z)};
  }
  _boxes.push_back(box);
  if (end - begin <= leaf_size) return at;
  const vec3d extent = {box.hi.x - box.lo.x, box.hi.y - box.lo.y, box.hi.z - box.lo.z};
  const int axis = extent.x >= extent.y && extent.x >= extent.z ? 0 : extent.y >= extent.z ? 1 : 2;
  const std::uint32_t middle = begin + (end - begin) / 2;
  std::nth_element(
      _order.begin() + begin, _order.begin() + middle, _order.begin() + end,
      [&](std::uint32_t i, std::uint32_t j) { return axis_of(_pts[i].approx, axis) < axis_of(_pts[j].approx, axis); });
  const std::int32_t low = build(begin, middle);
  const std::int32_t high = build(middle, end);
  _boxes[static_cast<std::size_t>(at)].low = low;
  _boxes[static_cast<std::size_t>(at)].high = high;
  return at;
}

double hull_point_tree_t::distance2(const box_t& box, const vec3d& p) {
  double d = 0;
  for (int a = 0; a < 3; ++a) {
    const double v = axis_of(p, a);
    const double gap = std::max({axis_of(box.lo, a) - v, 0.0, v - axis_of(box.hi, a)});
    d += gap * gap;
  }
  return d;
}

}  // namespace geom
