// The rules of fraction_t that the rational oracle cannot see: status bits,
// canonical forms, laziness, the odd cases of pack and reciprocal, the ends
// of the double range, and the Stern-Brocot walk of from_double.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

#include "geom/fraction_t.h"

namespace {

using geom::big_int_t;
using geom::fr;

constexpr double inf = std::numeric_limits<double>::infinity();

void expect_pair(const fr& f, long long num, long long den) {
  EXPECT_EQ(f.num, num);
  EXPECT_EQ(f.den, den);
}

TEST(fraction_t, constructors_and_canonical_values_spell_their_kind) {
  struct row_t {
    fr f;
    long long num, den;
    std::uint16_t status;
    double eva;
  };
  const row_t rows[] = {{fr(), 0, 0, 0, 0.0},
                        {fr(-7), -7, 1, fr::canonical_status, -7.0},
                        {fr(4, -6), 4, -6, 0, 0.0},
                        {fr::zero(), 0, 1, fr::canonical_status, 0.0},
                        {fr::one(), 1, 1, fr::canonical_status, 1.0},
                        {fr::positive_inf(), 1, 0, fr::canonical_status, inf},
                        {fr::negative_inf(), -1, 0, fr::canonical_status, -inf}};
  for (const row_t& r : rows) {
    expect_pair(r.f, r.num, r.den);
    EXPECT_EQ(r.f.status, r.status);
    EXPECT_EQ(r.f.get_eva(), r.eva);
  }
  expect_pair(fr::nan(), 0, 0);
  EXPECT_TRUE(std::isnan(fr::nan().get_eva()));
}

// The answer of an in-place operation says whether the value is canonical;
// the operand may be the target itself.
TEST(fraction_t, in_place_operations_answer_canonical_and_allow_aliasing) {
  fr f(1, 2);
  EXPECT_FALSE(f.add_assign(fr(1, 3)));
  expect_pair(f, 5, 6);
  EXPECT_TRUE(f.sub_assign(fr(5, 6)));
  EXPECT_EQ(f.status, fr::canonical_status);
  f = fr(1, 3);
  EXPECT_FALSE(f.add_assign(2));
  expect_pair(f, 7, 3);
  EXPECT_FALSE(f.sub_assign(1));
  EXPECT_FALSE(f.mul_assign(-2));
  expect_pair(f, -8, 3);
  EXPECT_FALSE(f.div_assign(-4));
  expect_pair(f, 8, 12);
  EXPECT_FALSE(f.div_assign(std::numeric_limits<std::int64_t>::min()));
  EXPECT_TRUE(f.num < 0 && f.den > 0);
  EXPECT_TRUE(f.mul_assign(0));
  expect_pair(f, 0, 1);
  f = fr(5);
  EXPECT_TRUE(f.div_assign(0));
  EXPECT_TRUE(eq(f, fr::positive_inf()));
  f = fr(-3, 4);
  f /= f;
  expect_pair(f, 12, 12);
  f = fr(3, 4);
  f *= f;
  expect_pair(f, 9, 16);
  EXPECT_TRUE(f.sub_assign(f));
}

TEST(fraction_t, unary_operations_keep_sign_and_cache_rules) {
  fr f(3, 4);
  f.evaluate();
  f.negate();
  EXPECT_TRUE(f.is_evaluated());
  EXPECT_EQ(f.get_eva(), -0.75);
  f.set_abs();
  EXPECT_EQ(f.get_eva(), 0.75);
  fr zero = fr::zero();
  zero.negate();
  EXPECT_EQ(zero.num.sign(), 0);
  fr r(-2, 3);
  r.evaluate();
  r.set_reciprocal();
  expect_pair(r, -3, 2);
  EXPECT_EQ(r.status, fr::packed_bit);
  zero.set_reciprocal();
  expect_pair(zero, 1, 0);  // not normalised, still marked packed
  EXPECT_EQ(zero.status, fr::packed_bit);
  const fr g(-2, 3);
  expect_pair(-g, 2, 3);
  expect_pair(g.get_reciprocal(), -3, 2);
  expect_pair(g.get_square(), 4, 9);
  expect_pair(g, -2, 3);
}

TEST(fraction_t, pack_turns_a_negative_denominator_only_with_a_common_factor) {
  fr a(1, -2);
  a.pack();
  expect_pair(a, 1, -2);
  EXPECT_TRUE(a.is_packed());
  fr b(2, -4);
  b.pack();
  expect_pair(b, -1, 2);
  EXPECT_FALSE(fr(0xffffffffLL, -0xffffffffLL).needs_pack());
  EXPECT_TRUE(fr(-0x100000000LL, 3).needs_pack());
  EXPECT_TRUE(fr(1, 0x100000000LL).needs_pack());
}

TEST(fraction_t, evaluation_caches_packed_values_and_survives_huge_integers) {
  fr f(6, 8);
  EXPECT_EQ(f.rough_value(), 0.75);
  EXPECT_EQ(f.status, 0);
  EXPECT_EQ(f.value(), 0.75);
  expect_pair(f, 3, 4);
  EXPECT_EQ(f.status, fr::canonical_status);
  fr packed(3, 4);
  packed.pack();
  EXPECT_EQ(packed.rough_value(), 0.75);
  EXPECT_TRUE(packed.is_evaluated());
  const big_int_t huge = big_int_t(1) << 1100;
  EXPECT_NEAR(geom::make_fraction(huge * 3 + 1, huge * 2).value(), 1.5, 1e-15);
  EXPECT_NEAR(geom::make_fraction(-(huge * 5), huge + 1).value(), -5.0, 1e-15);
  EXPECT_EQ(geom::make_fraction(1, huge).value(), 0.0);
  fr s = geom::make_fraction(big_int_t(1000000001), big_int_t(3000000000LL));
  s.simplify(1e-6);
  expect_pair(s, 1, 3);
  EXPECT_EQ(s.status, fr::packed_bit);
}

TEST(fraction_t, integer_comparisons_scale_by_the_denominator) {
  EXPECT_TRUE(gt_int(fr(7, 2), 3));
  EXPECT_TRUE(lt_int(fr(7, 2), 4));
  EXPECT_TRUE(le_int(fr(8, 2), 4) && ge_int(fr(8, 2), 4) && eq_int(fr(8, 2), 4));
  EXPECT_FALSE(eq_int(fr(7, 2), 3));
}

TEST(from_double, first_mediant_within_the_resolution_and_special_values) {
  expect_pair(geom::from_double(0.1, 0.02), 1, 9);
  expect_pair(geom::from_double(0.1, 0.001), 1, 10);
  expect_pair(geom::from_double(-2.5, 1e-9), -5, 2);
  expect_pair(geom::from_double(-0.004, 0.01), 0, 1);
  expect_pair(geom::from_double(std::nan(""), 1e-9), 0, 0);
  expect_pair(geom::from_double(inf, 1e-9), 1, 0);
  expect_pair(geom::from_double(-inf, 1e-9), -1, 0);
  const fr f = geom::from_double(0.1, 0.001);
  EXPECT_EQ(f.status, fr::packed_bit);
  EXPECT_EQ(f.get_eva(), 0.0);
}

// No fraction with a smaller denominator lies within the resolution.
TEST(from_double, result_is_the_simplest_fraction_in_tolerance) {
  std::mt19937_64 rng(7);
  std::uniform_real_distribution<double> values(-40.0, 40.0);
  std::uniform_real_distribution<double> exponents(-5.0, -2.0);
  for (int i = 0; i < 300; ++i) {
    const double v = values(rng);
    const double r = std::pow(10.0, exponents(rng));
    const fr f = geom::from_double(v, r);
    const double num = f.num.convert_to<double>();
    const auto den = f.den.convert_to<std::int64_t>();
    SCOPED_TRACE(std::to_string(v) + " at " + std::to_string(r));
    EXPECT_LT(std::fabs(num / static_cast<double>(den) - v), r);
    for (std::int64_t d = 1; d < den; ++d) {
      const double n = std::round(v * static_cast<double>(d));
      EXPECT_GE(std::fabs(n / static_cast<double>(d) - v), r * (1 - 1e-12)) << d;
    }
  }
}

TEST(from_double_death, a_resolution_that_never_ends_the_walk_aborts) {
  EXPECT_DEATH(geom::from_double(0.0, 0.0), "from_double: resolution must be positive");
  EXPECT_DEATH(geom::from_double(0.5, -1.0), "resolution must be positive");
}

}  // namespace
