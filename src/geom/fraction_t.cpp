#include "geom/fraction_t.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

namespace geom {

namespace {

constexpr double quiet_nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

// num/den as a double. Integers beyond the double range are first shifted
// down to about 512 bits, which keeps both operands finite while leaving full
// mantissas, so huge values with a moderate quotient still evaluate.
double quotient_to_double(const big_int_t& num, const big_int_t& den) {
  const double a = num.convert_to<double>();
  const double b = den.convert_to<double>();
  if (!std::isinf(a) && !std::isinf(b)) return a / b;
  if (den.is_zero()) return num.sign() < 0 ? -infinity : (num.is_zero() ? quiet_nan : infinity);
  if (num.is_zero()) return 0.0;
  const std::size_t shift = std::max(bit_length(num), bit_length(den)) - 1 - 512;
  const big_int_t a_shifted = abs(num) >> shift;
  const big_int_t b_shifted = abs(den) >> shift;
  return num.sign() * (a_shifted.convert_to<double>() / b_shifted.convert_to<double>());
}

std::int32_t saturate_to_int32(const big_int_t& q) {
  constexpr std::int32_t top = std::numeric_limits<std::int32_t>::max();
  constexpr std::int32_t bottom = std::numeric_limits<std::int32_t>::min();
  if (q >= top) return top;
  if (q <= bottom) return bottom;
  return q.convert_to<std::int32_t>();
}

// Where an infinity rounds to: the end of the range on its side.
std::int32_t end_of_range(int sign) {
  return sign > 0 ? std::numeric_limits<std::int32_t>::max() : std::numeric_limits<std::int32_t>::min();
}

// The final step of floor_int and ceil_int wraps like the 32-bit register it
// models; done unsigned so that the wrap is defined.
std::int32_t wrapping_add(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

// Magnitude of a signed 64-bit integer, also for the most negative one.
std::uint64_t magnitude(std::int64_t i) {
  return i < 0 ? 0 - static_cast<std::uint64_t>(i) : static_cast<std::uint64_t>(i);
}

}  // namespace

template <unsigned Bits, class Approx>
fraction_t<Bits, Approx>::fraction_t(std::int64_t i)
    : status(canonical_status), num(i), den(1), eva(static_cast<Approx>(i)) {}

template <unsigned Bits, class Approx>
fraction_t<Bits, Approx>::fraction_t(std::int64_t n, std::int64_t d) : num(n), den(d) {}

template <unsigned Bits, class Approx>
fraction_t<Bits, Approx> fraction_t<Bits, Approx>::zero() {
  return fraction_t(0);
}

template <unsigned Bits, class Approx>
fraction_t<Bits, Approx> fraction_t<Bits, Approx>::one() {
  return fraction_t(1);
}

template <unsigned Bits, class Approx>
fraction_t<Bits, Approx> fraction_t<Bits, Approx>::nan() {
  fraction_t f(0, 0);
  f.normalize_special();
  return f;
}

template <unsigned Bits, class Approx>
fraction_t<Bits, Approx> fraction_t<Bits, Approx>::positive_inf() {
  fraction_t f(1, 0);
  f.normalize_special();
  return f;
}

template <unsigned Bits, class Approx>
fraction_t<Bits, Approx> fraction_t<Bits, Approx>::negative_inf() {
  fraction_t f(-1, 0);
  f.normalize_special();
  return f;
}

template <unsigned Bits, class Approx>
bool fraction_t<Bits, Approx>::normalize_special() {
  if (den.is_zero()) {
    if (num.is_zero()) {
      num = 0;
      eva = quiet_nan;
    } else if (num.sign() > 0) {
      num = 1;
      eva = infinity;
    } else {
      num = -1;
      eva = -infinity;
    }
    status |= canonical_status;
    return true;
  }
  if (num.is_zero()) {
    den = 1;
    eva = 0.0;
    status |= canonical_status;
    return true;
  }
  return false;
}

template <unsigned Bits, class Approx>
bool fraction_t<Bits, Approx>::_settle() {
  if (normalize_special()) return true;
  status &= ~canonical_status;
  return false;
}

template <unsigned Bits, class Approx>
bool fraction_t<Bits, Approx>::add_assign(const fraction_t& b) {
  big_int_t n = num * b.den + b.num * den;
  den *= b.den;
  num = std::move(n);
  return _settle();
}

template <unsigned Bits, class Approx>
bool fraction_t<Bits, Approx>::sub_assign(const fraction_t& b) {
  big_int_t n = num * b.den - b.num * den;
  den *= b.den;
  num = std::move(n);
  return _settle();
}

template <unsigned Bits, class Approx>
bool fraction_t<Bits, Approx>::mul_assign(const fraction_t& b) {
  num *= b.num;
  den *= b.den;
  return _settle();
}

template <unsigned Bits, class Approx>
bool fraction_t<Bits, Approx>::div_assign(const fraction_t& b) {
  big_int_t n = num * b.den;
  big_int_t d = den * b.num;
  // Dividing by a negative value moves its sign onto the numerator, so that
  // arithmetic never makes a denominator negative.
  if (b.num.sign() < 0) {
    n = -n;
    d = -d;
  }
  num = std::move(n);
  den = std::move(d);
  return _settle();
}

template <unsigned Bits, class Approx>
bool fraction_t<Bits, Approx>::add_assign(std::int64_t i) {
  num += den * i;
  return _settle();
}

template <unsigned Bits, class Approx>
bool fraction_t<Bits, Approx>::sub_assign(std::int64_t i) {
  num -= den * i;
  return _settle();
}

template <unsigned Bits, class Approx>
bool fraction_t<Bits, Approx>::mul_assign(std::int64_t i) {
  num *= i;
  return _settle();
}

template <unsigned Bits, class Approx>
bool fraction_t<Bits, Approx>::div_assign(std::int64_t i) {
  den *= magnitude(i);
  if (i < 0) num = -num;
  return _settle();
}

template <unsigned Bits, class Approx>
void fraction_t<Bits, Approx>::set_square() {
  num *= num;
  den *= den;
  _settle();
}

template <unsigned Bits, class Approx>
void fraction_t<Bits, Approx>::negate() {
  if (!num.is_zero()) num = -num;
  if (is_evaluated()) eva = -eva;
}

template <unsigned Bits, class Approx>
void fraction_t<Bits, Approx>::set_abs() {
  if (num.sign() >= 0) return;
  num = -num;
  if (is_evaluated()) eva = -eva;
}

template <unsigned Bits, class Approx>
void fraction_t<Bits, Approx>::set_reciprocal() {
  const bool negative = num.sign() < 0;
  num.swap(den);
  if (negative) {
    num = -num;
    den = -den;
  }
  status &= ~evaluated_bit;
}

template <unsigned Bits, class Approx>
fraction_t<Bits, Approx> fraction_t<Bits, Approx>::_copy_with(void (fraction_t::*op)()) const {
  fraction_t f(*this);
  (f.*op)();
  return f;
}

template <unsigned Bits, class Approx>
fraction_t<Bits, Approx> fraction_t<Bits, Approx>::neg() const {
  return _copy_with(&fraction_t::negate);
}

template <unsigned Bits, class Approx>
fraction_t<Bits, Approx> fraction_t<Bits, Approx>::get_abs() const {
  return _copy_with(&fraction_t::set_abs);
}

template <unsigned Bits, class Approx>
fraction_t<Bits, Approx> fraction_t<Bits, Approx>::get_reciprocal() const {
  return _copy_with(&fraction_t::set_reciprocal);
}

template <unsigned Bits, class Approx>
fraction_t<Bits, Approx> fraction_t<Bits, Approx>::get_square() const {
  return _copy_with(&fraction_t::set_square);
}

template <unsigned Bits, class Approx>
void fraction_t<Bits, Approx>::pack() {
  if (is_packed()) return;
  status |= packed_bit;
  if (fits_word(num) && fits_word(den)) {
    // Word-sized integers, the common case on a model grid, reduce in words.
    const std::uint64_t n = word_magnitude(num);
    const std::uint64_t d = word_magnitude(den);
    const std::uint64_t g = std::gcd(n, d);
    if (g <= 1) return;
    const bool negative = (num.sign() < 0) != (den.sign() < 0);
    num = n / g;
    if (negative) num = -num;
    den = d / g;
    return;
  }
  const big_int_t g = gcd_of(num, den);
  if (g <= 1) return;
  if (den.sign() < 0) {
    num = -num / g;
    den = -den / g;
  } else {
    num /= g;
    den /= g;
  }
}

template <unsigned Bits, class Approx>
void fraction_t<Bits, Approx>::evaluate() {
  if (is_evaluated()) return;
  pack();
  eva = quotient_to_double(num, den);
  status |= evaluated_bit;
}

template <unsigned Bits, class Approx>
Approx fraction_t<Bits, Approx>::value() {
  evaluate();
  return eva;
}

template <unsigned Bits, class Approx>
Approx fraction_t<Bits, Approx>::rough_value() {
  if (is_evaluated()) return eva;
  // Unreduced integers give a fine approximation, but caching it would let a
  // later evaluate() skip the pack that it promises.
  if (!is_packed()) return quotient_to_double(num, den);
  eva = quotient_to_double(num, den);
  status |= evaluated_bit;
  return eva;
}

template <unsigned Bits, class Approx>
void fraction_t<Bits, Approx>::simplify(double resolution) {
  evaluate();
  fraction_t simple = from_double(eva, resolution);
  num = std::move(simple.num);
  den = std::move(simple.den);
  status = packed_bit;
}

template <unsigned Bits, class Approx>
std::int32_t fraction_t<Bits, Approx>::floor_int() const {
  if (num.is_zero()) return 0;
  if (den.is_zero()) return end_of_range(num.sign());
  if (num.sign() > 0) return saturate_to_int32(num / den);
  return wrapping_add(saturate_to_int32((num + 1) / den), -1);
}

template <unsigned Bits, class Approx>
std::int32_t fraction_t<Bits, Approx>::ceil_int() const {
  if (num.is_zero()) return 0;
  if (den.is_zero()) return end_of_range(num.sign());
  if (num.sign() < 0) return saturate_to_int32(num / den);
  return wrapping_add(saturate_to_int32((num - 1) / den), 1);
}

template <unsigned Bits, class Approx>
bool fraction_t<Bits, Approx>::needs_pack() const {
  constexpr std::int64_t limit = 0xffffffff;
  return num > limit || num < -limit || den > limit;
}

template <unsigned Bits, class Approx>
void fraction_t<Bits, Approx>::set_num(big_int_t n) {
  num = std::move(n);
  status &= ~canonical_status;
}

template <unsigned Bits, class Approx>
void fraction_t<Bits, Approx>::set_den(big_int_t d) {
  den = std::move(d);
  status &= ~canonical_status;
}

template class fraction_t<0, double>;

}  // namespace geom
