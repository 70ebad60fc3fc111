#include "milling/cutting_coefficients_t.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace mech {

namespace {

constexpr double pi = std::numbers::pi;

coeff3_t blend(const coeff3_t& a, const coeff3_t& b, double s) {
  return {a[0] + (b[0] - a[0]) * s, a[1] + (b[1] - a[1]) * s, a[2] + (b[2] - a[2]) * s};
}

// The count of coefficients a model takes with these dims, or nothing when
// the dims are not the model's.
std::optional<std::size_t> expected_count(int model, std::span<const int> d) {
  switch (model) {
    case 1:
      return d.empty() ? std::optional<std::size_t>(4) : std::nullopt;
    case 2:
      return d.empty() ? std::optional<std::size_t>(6) : std::nullopt;
    case 3:
      if (d.size() != 1 || d[0] < 1) return std::nullopt;
      return 6 * std::size_t(d[0]);
    case 4:
      if (d.size() != 3 || d[0] < 1 || d[1] < 0 || d[2] < 0) return std::nullopt;
      return 3 * std::size_t(d[1]) * std::size_t(d[2]) * std::size_t(d[0]) + 6 * std::size_t(d[0]);
    case 5:
      if (d.size() != 4 || d[0] < 1 || d[1] < 0 || d[2] < 1) return std::nullopt;
      return 3 * std::size_t(d[1]) * std::size_t(d[2]) * std::size_t(d[0]) + 3 * std::size_t(d[0]) + 3;
    default:
      return std::nullopt;
  }
}

// Index and weight of value on a grid of the given step, with the upper
// index.
struct grid_pos_t {
  long lo;
  long hi;
  double s;
};
grid_pos_t grid_pos(double value, double step) {
  const double x = value / step;
  const double lo = std::floor(x);
  return {static_cast<long>(lo), static_cast<long>(std::ceil(x)), x - lo};
}

std::size_t wrap_index(long i, std::size_t n) {
  const long m = static_cast<long>(n);
  return static_cast<std::size_t>(((i % m) + m) % m);
}

}  // namespace

std::optional<cutting_coefficients_t> cutting_coefficients_t::make(int model, std::span<const int> dims,
                                                                   std::span<const double> coeffs) {
  const std::optional<std::size_t> count = expected_count(model, dims);
  if (!count || *count != coeffs.size()) return std::nullopt;
  cutting_coefficients_t c;
  c._model = model;
  c._n = dims.empty() ? 1 : std::size_t(dims[0]);
  if (model >= 4) {
    c._nb = std::size_t(dims[1]);
    c._nc = std::size_t(dims[2]);
  }
  c._half_range = model == 5 && dims[3] != 0;
  c._c.assign(coeffs.begin(), coeffs.end());
  return c;
}

coeff3_t cutting_coefficients_t::row(std::size_t index) const {
  return {_c[3 * index], _c[3 * index + 1], _c[3 * index + 2]};
}

kc_ke_t cutting_coefficients_t::for_edge(std::size_t flute, const geom::vec3d& vl) const {
  switch (_model) {
    case 1:
      return {{0, _c[0], _c[1]}, {0, _c[2], _c[3]}};
    case 2:
      return {row(0), row(1)};
    case 3:
      return {row(2 * (flute % _n)), row(2 * (flute % _n) + 1)};
    default:
      return {model4_kc(flute, vl), row(_nb * _nc * _n + _n + flute % _n)};
  }
}

// Polar index 0 is the base row, whatever the azimuth.
coeff3_t cutting_coefficients_t::polar_row(std::size_t flute, std::size_t polar, std::size_t azimuth) const {
  if (polar == 0) return row(_nb * _nc * _n + flute);
  return row(((polar - 1) + _nb * flute) * _nc + azimuth);
}

coeff3_t cutting_coefficients_t::model4_kc(std::size_t flute, const geom::vec3d& vl) const {
  const std::size_t f = flute % _n;
  const double polar = std::atan2(std::hypot(vl.x, vl.y), vl.z);
  double azimuth = std::atan2(-vl.y, vl.x);
  if (azimuth < 0) azimuth += 2 * pi;
  if (std::abs(polar) < 1e-7 || _nb == 0 || _nc == 0 || !std::isfinite(polar) || !std::isfinite(azimuth)) {
    return polar_row(f, 0, 0);
  }
  const grid_pos_t p = grid_pos(polar, pi / (2.0 * double(_nb)));
  const grid_pos_t a = grid_pos(azimuth, 2 * pi / double(_nc));
  const auto polar_index = [this](long i) { return static_cast<std::size_t>(std::min<long>(i, long(_nb))); };
  const auto at = [&](long i, long j) { return polar_row(f, polar_index(i), wrap_index(j, _nc)); };
  return blend(blend(at(p.lo, a.lo), at(p.lo, a.hi), a.s), blend(at(p.hi, a.lo), at(p.hi, a.hi), a.s), p.s);
}

coeff3_t cutting_coefficients_t::tooth_kc(std::size_t flute, double tooth_angle, double inclination) const {
  if (_nb == 0) return {0, 0, 0};
  if (!std::isfinite(tooth_angle) || !std::isfinite(inclination)) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    return {nan, nan, nan};
  }
  const std::size_t f = flute % _n;
  const double tooth = std::abs(tooth_angle) < 1e-4 ? 0.0 : tooth_angle;
  const double incl = std::abs(inclination) < 1e-4 ? 0.0 : inclination;
  const double incl_step = _half_range ? pi / double(_nc - 1) : pi / (2.0 * double(_nc) - 2);
  const grid_pos_t t = grid_pos(tooth, 2 * pi / double(_nb));
  // One inclination step (ne = 1) makes the step infinite: every value is index 0.
  const grid_pos_t e = _nc == 1 ? grid_pos_t{0, 0, 0} : grid_pos(incl + pi / 2, incl_step);
  const auto clamp_e = [this](long j) { return static_cast<std::size_t>(std::clamp<long>(j, 0, long(_nc) - 1)); };
  const auto at = [&](long i, long j) { return row((wrap_index(i, _nb) + _nb * f) * _nc + clamp_e(j)); };
  return blend(blend(at(t.lo, e.lo), at(t.lo, e.hi), e.s), blend(at(t.hi, e.lo), at(t.hi, e.hi), e.s), t.s);
}

coeff3_t cutting_coefficients_t::bottom_kc(std::size_t flute) const {
  return row(_nb * _nc * _n + (flute < _n ? flute : 0));
}

coeff3_t cutting_coefficients_t::model5_ke() const { return row(_nb * _nc * _n + _n); }

}  // namespace mech
