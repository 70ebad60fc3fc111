#include "geom/big_int.h"

namespace geom {

big_int_t gcd_of(const big_int_t& a, const big_int_t& b) { return gcd(a, b); }

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
