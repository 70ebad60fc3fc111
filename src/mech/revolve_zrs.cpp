#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

#include "geom/Stl3d.h"
#include "geom/stl3d_t.h"
#include "mech/apt_t.h"

namespace mech {

namespace {

using point = std::array<double, 3>;
using zr = geom::pair_zr_t<double>;

class revolver {
 public:
  explicit revolver(int sides) : _sides(sides) {
    for (int i = 0; i <= sides; ++i) {
      const double angle = 2 * std::numbers::pi * i / sides;
      _ring.push_back({std::cos(angle), std::sin(angle)});
    }
    // The last direction is the first again, exactly, so the ring closes
    // on shared vertices.
    _ring.back() = _ring.front();
  }

  // The band between two outline points, counter-clockwise from outside
  // while the outline runs round the solid with the axis on its left.
  void band(const zr& p, const zr& q) {
    for (int i = 0; i < _sides; ++i) {
      if (p.r != 0) _tri(_at(p, i), _at(p, i + 1), _at(q, i + 1));
      if (q.r != 0) _tri(_at(p, i), _at(q, i + 1), _at(q, i));
    }
  }

  // A ring closed by a fan to the axis at its own height.
  void cap(const zr& p, bool upward) {
    const point centre = {0, 0, p.z};
    for (int i = 0; i < _sides; ++i) {
      if (upward)
        _tri(centre, _at(p, i), _at(p, i + 1));
      else
        _tri(centre, _at(p, i + 1), _at(p, i));
    }
  }

  geom::Stl3d take() { return {std::move(_soup)}; }

 private:
  point _at(const zr& p, int i) const { return {p.r * _ring[i][0], p.r * _ring[i][1], p.z}; }

  void _tri(const point& a, const point& b, const point& c) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    _soup->tris.push_back({a, b, c, {nan, nan, nan}});
  }

  int _sides;
  std::vector<std::array<double, 2>> _ring;
  geom::stl3d_ptr _soup{new geom::stl3d_t};
};

}  // namespace

geom::Stl3d apt_t::revolve_zrs(const zr* pairs, int count, int sides) {
  // Two triangles per side for each band and cap at most.
  const auto most_tris = 2 * static_cast<std::int64_t>(sides) * (static_cast<std::int64_t>(count) + 1);
  if (!pairs || count < 1 || sides < 3 || sides > max_sides || most_tris > max_revolved_tris)
    return {geom::stl3d_ptr(new geom::stl3d_t)};
  revolver rev(sides);
  // Repeated points (a sharp corner given twice) would make bands without
  // area.
  std::vector<zr> outline;
  for (int i = 0; i < count; ++i)
    if (outline.empty() || outline.back().z != pairs[i].z || outline.back().r != pairs[i].r)
      outline.push_back(pairs[i]);
  if (outline.front().r != 0) rev.cap(outline.front(), false);
  for (std::size_t i = 0; i + 1 < outline.size(); ++i) rev.band(outline[i], outline[i + 1]);
  if (outline.back().r != 0) rev.cap(outline.back(), true);
  return rev.take();
}

}  // namespace mech
