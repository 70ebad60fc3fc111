#pragma once

// The exact number of the library: a rational on unlimited integers with a
// cached double. Every geometric decision of the exact subsystems is taken on
// these values, so no predicate ever depends on a rounding; the double is a
// cache for display and coarse boxes and is never consulted by a comparison.
//
// Notation used below:
//   num, den   the two integers; num carries the sign of the value
//   packed     status bit 0: num and den are in lowest terms
//   evaluated  status bit 1: eva holds num/den as a double
//   canonical  one of 0/0 (NaN), 1/0, -1/0, 0/1, each with status 3
//
// Values are lazy: sums and products are cross multiplications without
// reduction, and the gcd runs only at pack, on evaluation, or where a caller
// sees needs_pack(). Non-finite values are spelled in num and den (den == 0)
// and follow the same formulas as finite ones, with no special casing: so
// inf + inf is 0/0, a NaN, and a comparison with a NaN answers "equal".

#include <cstdint>

#include "geom/big_int.h"

namespace geom {

// Bits selects the integer width, 0 meaning unlimited (the same 0 as in
// cpp_int_backend<0, 0, ...>); Approx is the type of the cached value.
template <unsigned Bits, class Approx>
class fraction_t {
  static_assert(Bits == 0, "only unlimited integers are provided");

 public:
  static constexpr std::uint16_t packed_bit = 1;
  static constexpr std::uint16_t evaluated_bit = 2;
  static constexpr std::uint16_t canonical_status = packed_bit | evaluated_bit;

  std::uint16_t status = 0;
  big_int_t num;
  big_int_t den;
  Approx eva = 0;

  // 0/0 with status 0: a NaN that has not been normalised.
  fraction_t() = default;
  // i/1, packed and evaluated.
  explicit fraction_t(std::int64_t i);
  // The pair as given: no reduction, no normalisation, status 0. This is the
  // one way (with set_den) to a negative denominator.
  fraction_t(std::int64_t n, std::int64_t d);

  static fraction_t zero();
  static fraction_t one();
  static fraction_t nan();
  static fraction_t positive_inf();
  static fraction_t negative_inf();

  // Turns a zero denominator into NaN or a signed infinity and a zero
  // numerator into 0/1, with status 3; answers whether it did. Callers clear
  // both status bits when it answers false.
  bool normalize_special();

  // In-place arithmetic. Each answers normalize_special(): true when the
  // value is now canonical. The right operand may be *this.
  bool add_assign(const fraction_t& b);
  bool sub_assign(const fraction_t& b);
  bool mul_assign(const fraction_t& b);
  bool div_assign(const fraction_t& b);
  bool add_assign(std::int64_t i);
  bool sub_assign(std::int64_t i);
  bool mul_assign(std::int64_t i);
  bool div_assign(std::int64_t i);
  fraction_t& operator+=(const fraction_t& b) {
    add_assign(b);
    return *this;
  }
  fraction_t& operator-=(const fraction_t& b) {
    sub_assign(b);
    return *this;
  }
  fraction_t& operator*=(const fraction_t& b) {
    mul_assign(b);
    return *this;
  }
  fraction_t& operator/=(const fraction_t& b) {
    div_assign(b);
    return *this;
  }

  // Flips the sign of num (a zero stays unsigned) and of a cached eva.
  void negate();
  void set_abs();
  // Swaps the integers. A negative value keeps its sign on the numerator.
  // Keeps the packed bit, drops the evaluated one, and does not normalise:
  // the reciprocal of 0/1 is 1/0 still marked packed.
  void set_reciprocal();
  void set_square();
  fraction_t neg() const;
  fraction_t get_abs() const;
  fraction_t get_reciprocal() const;
  fraction_t get_square() const;
  fraction_t operator-() const { return neg(); }

  bool is_finite() const { return !den.is_zero(); }
  bool is_nan() const { return num.is_zero() && den.is_zero(); }
  bool is_zero() const { return num.is_zero() && !den.is_zero(); }
  // By the numerator alone; the sign of den is not looked at.
  int sign() const { return num.sign(); }
  bool is_packed() const { return (status & packed_bit) != 0; }
  bool is_evaluated() const { return (status & evaluated_bit) != 0; }
  // The raw field, whatever status says.
  Approx get_eva() const { return eva; }

  // Reduces to lowest terms. A negative den is made positive only when the
  // gcd exceeds 1, so 1/-2 ends packed with its sign below.
  void pack();
  // Packs, then caches the quotient.
  void evaluate();
  Approx value();
  // The cached value if there is one; otherwise the quotient of the integers
  // as they stand, cached only when they are already packed.
  Approx rough_value();
  // Replaces the value by the simplest fraction within resolution of its
  // double: the only deliberately lossy operation.
  void simplify(double resolution);

  // floor and ceil as 32-bit integers, saturating at the ends of the range;
  // an infinity goes to the end on its side and a NaN to 0.
  std::int32_t floor_int() const;
  std::int32_t ceil_int() const;

  // True when an integer has outgrown 32 bits: values kept for long are
  // packed only then, so that small ones skip the gcd.
  bool needs_pack() const;

  // Replace one integer as given and drop both status bits.
  void set_num(big_int_t n);
  void set_den(big_int_t d);

 private:
  // The tail of every mutating arithmetic: normalize_special(), and a value
  // that did not land on a canonical form loses both status bits.
  bool _settle();
  // A copy of *this with an in-place operation applied.
  fraction_t _copy_with(void (fraction_t::*op)()) const;
};

extern template class fraction_t<0, double>;

using fr = fraction_t<0, double>;

// The factory behind every binary operator: a zero den gives a canonical
// NaN or infinity, a zero num a canonical 0/1, and anything else is taken
// as it is with status 0 and eva 0.
fr make_fraction(big_int_t num, big_int_t den);

// The simplest fraction within resolution of value: the first mediant of a
// Stern-Brocot walk that comes that close, in lowest terms, status 1. The
// walk is answered as if it took one step at a time, but a run of steps in
// one direction is crossed at once, so its cost grows with the logarithm of
// the value. Values and resolutions outside from_double_bounded abort: the
// boundary refuses them before they get here.
fr from_double(double value, double resolution);

// Whether from_double answers (value, resolution) within its bounds: NaN,
// infinite values and values below the resolution always; otherwise a
// positive resolution and |value| below 2^53, and for |value| below 1 a
// resolution of at least 2^-48. Within them every mediant the walk meets is
// a pair of integers below 2^53, so its double is exact up to one rounding.
bool from_double_bounded(double value, double resolution);

// Binary arithmetic by cross multiplication, never reduced.
fr operator+(const fr& a, const fr& b);
fr operator-(const fr& a, const fr& b);
fr operator*(const fr& a, const fr& b);
fr operator/(const fr& a, const fr& b);

// Three-way comparison: an exact filter for equal denominators and opposite
// signs, the cross products otherwise. With a NaN on either side it answers
// 0, and so it does for +inf against -inf.
int compare(const fr& a, const fr& b);
// Structural on two packed values (no multiplication), cross products else.
bool eq(const fr& a, const fr& b);
// Always the cross products a.num*b.den against a.den*b.num.
bool lt(const fr& a, const fr& b);
bool le(const fr& a, const fr& b);
bool gt(const fr& a, const fr& b);
bool ge(const fr& a, const fr& b);
// num against den*i.
bool eq_int(const fr& a, std::int64_t i);
bool lt_int(const fr& a, std::int64_t i);
bool le_int(const fr& a, std::int64_t i);
bool gt_int(const fr& a, std::int64_t i);
bool ge_int(const fr& a, std::int64_t i);

inline bool operator==(const fr& a, const fr& b) { return eq(a, b); }
inline bool operator<(const fr& a, const fr& b) { return lt(a, b); }
inline bool operator<=(const fr& a, const fr& b) { return le(a, b); }
inline bool operator>(const fr& a, const fr& b) { return gt(a, b); }
inline bool operator>=(const fr& a, const fr& b) { return ge(a, b); }

}  // namespace geom
