#include "geom/big_int.h"

#include <cstdint>
#include <limits>
#include <numeric>

namespace geom {

namespace {

constexpr std::uint64_t word_max = std::numeric_limits<std::uint64_t>::max();

}  // namespace

bool fits_word(const big_int_t& n) { return n <= word_max && n >= -big_int_t(word_max); }

std::uint64_t word_magnitude(const big_int_t& n) {
  return n.sign() < 0 ? static_cast<std::uint64_t>(-n) : static_cast<std::uint64_t>(n);
}

big_int_t gcd_of(const big_int_t& a, const big_int_t& b) {
  if (fits_word(a) && fits_word(b)) return std::gcd(word_magnitude(a), word_magnitude(b));
  return gcd(a, b);
}

std::size_t bit_length(const big_int_t& n) {
  if (n.is_zero()) return 0;
  if (n.sign() > 0) return msb(n) + 1;
  // msb is defined on non-negative values only.
  const big_int_t magnitude = -n;
  return msb(magnitude) + 1;
}

big_int_t lcm_of(const big_int_t& a, const big_int_t& b) {
  if (a.is_zero() || b.is_zero()) return 0;
  return abs(a / gcd_of(a, b) * b);
}

}  // namespace geom
