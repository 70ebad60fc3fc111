#include <cmath>
#include <cstdint>
#include <limits>

#include "common/check.h"
#include "geom/fraction_t.h"

namespace geom {

namespace {

// The walk's bounds. Denominators stop just past 2^63 and a walk reaches a
// numerator only one step per unit of the value, so 128 bits never overflow
// within any walk that ends.
using wide_t = __int128;

struct bound_t {
  wide_t num;
  wide_t den;
};

constexpr wide_t den_limit = std::numeric_limits<std::int64_t>::max();

// In lowest terms by construction of the walk, not yet evaluated.
fr walk_result(const bound_t& b) {
  fr f;
  f.num = big_int_t(b.num);
  f.den = big_int_t(b.den);
  f.status = fr::packed_bit;
  return f;
}

// Single mediant steps between lo and hi until a mediant lands within
// resolution of value, or a denominator outgrows 64 bits.
fr stern_brocot_walk(double value, double resolution, bound_t lo, bound_t hi) {
  for (;;) {
    if (lo.den > den_limit || hi.den > den_limit) return walk_result(lo.den > den_limit ? hi : lo);
    const bound_t m{lo.num + hi.num, lo.den + hi.den};
    const double d = static_cast<double>(m.num) / static_cast<double>(m.den);
    if (resolution > std::fabs(d - value)) {
      if (m.den > den_limit) return walk_result(lo.den >= hi.den ? lo : hi);
      return walk_result(m);
    }
    if (value > d)
      lo = m;
    else
      hi = m;
  }
}

}  // namespace

fr from_double(double value, double resolution) {
  if (std::isnan(value)) return walk_result({0, 0});
  if (resolution > std::fabs(value)) return walk_result({0, 1});
  if (std::isinf(value)) return walk_result({value > 0 ? 1 : -1, 0});
  QV_CHECK(resolution > 0, "from_double: resolution must be positive");
  if (value > 0) return stern_brocot_walk(value, resolution, {0, 1}, {1, 0});
  return stern_brocot_walk(value, resolution, {-1, 0}, {0, 1});
}

}  // namespace geom
