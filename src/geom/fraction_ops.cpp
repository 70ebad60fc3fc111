#include "geom/fraction_t.h"

#include <utility>

namespace geom {

namespace {

int three_way(int c) { return (c > 0) - (c < 0); }

// a.num*b.den against a.den*b.num: the exact order of two values with
// positive denominators, and 0 whenever a NaN takes part.
int cross_compare(const fr& a, const fr& b) {
  const big_int_t left = a.num * b.den;
  const big_int_t right = a.den * b.num;
  return three_way(left.compare(right));
}

}  // namespace

fr make_fraction(big_int_t num, big_int_t den) {
  fr f;
  f.num = std::move(num);
  f.den = std::move(den);
  f.normalize_special();
  return f;
}

fr operator+(const fr& a, const fr& b) { return make_fraction(a.num * b.den + b.num * a.den, a.den * b.den); }

fr operator-(const fr& a, const fr& b) { return make_fraction(a.num * b.den - b.num * a.den, a.den * b.den); }

fr operator*(const fr& a, const fr& b) { return make_fraction(a.num * b.num, a.den * b.den); }

fr operator/(const fr& a, const fr& b) {
  // The divisor's sign goes onto the numerator so that arithmetic never
  // makes a denominator negative.
  if (b.num.sign() < 0) return make_fraction(-(a.num * b.den), -(a.den * b.num));
  return make_fraction(a.num * b.den, a.den * b.num);
}

int compare(const fr& a, const fr& b) {
  // Equal denominators and opposite signs are decided without the two big
  // multiplications; both shortcuts are exact.
  const int sa = a.num.sign();
  const int sb = b.num.sign();
  if (sa == sb) {
    if (!a.den.is_zero() && a.den == b.den) return three_way(a.num.compare(b.num));
  } else if (!a.den.is_zero() && !b.den.is_zero()) {
    return sa < sb ? -1 : 1;
  }
  return cross_compare(a, b);
}

bool eq(const fr& a, const fr& b) {
  if (a.is_packed() && b.is_packed()) return a.num == b.num && a.den == b.den;
  return cross_compare(a, b) == 0;
}

bool lt(const fr& a, const fr& b) { return cross_compare(a, b) < 0; }
bool le(const fr& a, const fr& b) { return cross_compare(a, b) <= 0; }
bool gt(const fr& a, const fr& b) { return cross_compare(a, b) > 0; }
bool ge(const fr& a, const fr& b) { return cross_compare(a, b) >= 0; }

bool eq_int(const fr& a, std::int64_t i) { return a.num == a.den * i; }
bool lt_int(const fr& a, std::int64_t i) { return a.num < a.den * i; }
bool le_int(const fr& a, std::int64_t i) { return a.num <= a.den * i; }
bool gt_int(const fr& a, std::int64_t i) { return a.num > a.den * i; }
bool ge_int(const fr& a, std::int64_t i) { return a.num >= a.den * i; }

}  // namespace geom
