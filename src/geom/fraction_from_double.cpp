#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "common/check.h"
#include "geom/fraction_t.h"

namespace geom {

namespace {

// The walk's bounds. Denominators stop just past 2^63, and values that
// reach the walk are below 2^53, so 128 bits never overflow.
using wide_t = __int128;

struct bound_t {
  wide_t num;
  wide_t den;
};

constexpr wide_t den_limit = std::numeric_limits<std::int64_t>::max();

// Integers up to 2^53 convert to double exactly, so the double of a mediant
// within it is the exact quotient rounded once, and moves with the mediant.
constexpr wide_t exact_limit = wide_t{1} << 53;

// In lowest terms by construction of the walk, not yet evaluated.
fr walk_result(const bound_t& b) {
  fr f;
  f.num = big_int_t(b.num);
  f.den = big_int_t(b.den);
  f.status = fr::packed_bit;
  return f;
}

double quotient(const bound_t& m) { return static_cast<double>(m.num) / static_cast<double>(m.den); }

wide_t magnitude(wide_t v) { return v < 0 ? -v : v; }

// The largest k for which base + k * step keeps both integers within
// exact_limit.
wide_t exact_steps(const bound_t& base, const bound_t& step) {
  wide_t k = exact_limit;
  if (magnitude(base.num) > exact_limit || base.den > exact_limit) return 0;
  if (step.num != 0) k = std::min(k, (exact_limit - magnitude(base.num)) / magnitude(step.num));
  if (step.den != 0) k = std::min(k, (exact_limit - base.den) / step.den);
  return k;
}

class walk_t {
 public:
  walk_t(double value, double resolution) : _value(value), _resolution(resolution) {}

  // Single mediant steps between lo and hi until a mediant lands within
  // resolution of the value, or a denominator outgrows 64 bits.
  fr run(bound_t lo, bound_t hi) const {
    for (;;) {
      if (lo.den > den_limit || hi.den > den_limit) return walk_result(lo.den > den_limit ? hi : lo);
      const bound_t m{lo.num + hi.num, lo.den + hi.den};
      const double d = quotient(m);
      if (_stops(d)) {
        if (m.den > den_limit) return walk_result(lo.den >= hi.den ? lo : hi);
        return walk_result(m);
      }
      const bool up = _value > d;
      (up ? lo : hi) = m;
      _skip_run(up, up ? lo : hi, up ? hi : lo);
    }
  }

 private:
  bool _stops(double d) const { return _resolution > std::fabs(d - _value); }

  // Whether the mediant base + k * step neither stops the walk nor turns it.
  bool _goes_on(bool up, const bound_t& base, const bound_t& step, wide_t k) const {
    const double d = quotient({base.num + k * step.num, base.den + k * step.den});
    return !_stops(d) && (_value > d) == up;
  }

  // A walk that moved its bound to base goes on with mediants base + k *
  // step, k = 1, 2, ..., as long as they neither stop it nor turn it: moves
  // base over all of them at once. Within exact_limit their doubles are
  // monotone in k, so the ones that go on are a prefix found by doubling and
  // halving; beyond it the single steps of run() take over, with the same
  // outcome.
  void _skip_run(bool up, bound_t& base, const bound_t& step) const {
    const wide_t most = exact_steps(base, step);
    wide_t good = 0;
    wide_t probe = 1;
    while (probe <= most && _goes_on(up, base, step, probe)) {
      good = probe;
      probe = probe == most ? most + 1 : std::min(probe * 2, most);
    }
    wide_t bad = std::min(probe, most + 1);
    while (bad - good > 1) {
      const wide_t mid = good + (bad - good) / 2;
      (_goes_on(up, base, step, mid) ? good : bad) = mid;
    }
    base = {base.num + good * step.num, base.den + good * step.den};
  }

  double _value;
  double _resolution;
};

constexpr double walk_value_limit = 9007199254740992.0;  // 2^53
constexpr double fine_resolution = 0x1p-48;

}  // namespace

bool from_double_bounded(double value, double resolution) {
  if (std::isnan(value) || resolution > std::fabs(value) || std::isinf(value)) return true;
  if (!(resolution > 0) || !(std::fabs(value) < walk_value_limit)) return false;
  return std::fabs(value) >= 1 || resolution >= fine_resolution;
}

fr from_double(double value, double resolution) {
  if (std::isnan(value)) return walk_result({0, 0});
  if (resolution > std::fabs(value)) return walk_result({0, 1});
  if (std::isinf(value)) return walk_result({value > 0 ? 1 : -1, 0});
  QV_CHECK(from_double_bounded(value, resolution),
           "from_double: resolution must be positive, and value and resolution within their bounds");
  const walk_t walk(value, resolution);
  if (value > 0) return walk.run({0, 1}, {1, 0});
  return walk.run({-1, 0}, {0, 1});
}

}  // namespace geom
