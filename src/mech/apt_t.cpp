#include "mech/apt_t.h"

#include <cmath>
#include <numbers>

#include "geom/Stl3d.h"
#include "geom/stl3d_t.h"
#include "mech/apt_derivative_t.h"

namespace mech {

apt_t::apt_t(double d, double r, double e, double f, double a, double b, double h)
    : d(d), r(r), e(e), f(f), a(a), b(b), h(h) {}

apt_t& apt_t::operator=(const apt_t& other) = default;
apt_t& apt_t::operator=(apt_t&& other) noexcept = default;

std::vector<geom::pair_zr_t<double>> apt_t::_get_zrs(const apt_derivative_t& der, int arc_steps) const {
  const double z6 = der.v[6], r7 = der.v[7], z8 = der.v[8], r9 = der.v[9];
  std::vector<geom::pair_zr_t<double>> zrs;
  // A bottom that starts off the axis is flat and has no cone to the tip.
  if (z6 != 0) zrs.push_back({0, 0});
  zrs.push_back({z6, r7});
  if (r > 0) {
    const double a0 = std::atan2(z6 - f, r7 - e);
    const double a1 = std::atan2(z8 - f, r9 - e);
    // Sizes that make no arc (NaN angles) get no inner arc points; the
    // outline's non-finite joints are refused by the caller.
    const double turns = std::ceil((a1 - a0) / std::numbers::pi);
    const int n = std::isfinite(turns) && turns > 0 ? static_cast<int>(turns) * arc_steps : 1;
    const double da = (a1 - a0) / n;
    for (int i = 1; i < n; ++i) zrs.push_back({f + r * std::sin(a0 + i * da), e + r * std::cos(a0 + i * da)});
    zrs.push_back({z8, r9});
  }
  zrs.push_back({h, (h - z8) * der.v[5] + r9});
  return zrs;
}

geom::Stl3d apt_t::get_Stl3d(int sides, int arc_steps) const {
  if (sides < 3 || arc_steps < 1 || arc_steps > max_arc_steps) return {geom::stl3d_ptr(new geom::stl3d_t)};
  const std::vector<geom::pair_zr_t<double>> zrs = _get_zrs(apt_derivative_t(*this), arc_steps);
  for (const auto& p : zrs)
    if (!std::isfinite(p.z) || !std::isfinite(p.r)) return {geom::stl3d_ptr(new geom::stl3d_t)};
  return revolve_zrs(zrs.data(), static_cast<int>(zrs.size()), sides);
}

}  // namespace mech
