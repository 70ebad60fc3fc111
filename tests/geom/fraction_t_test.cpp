// The rules of fraction_t that the rational oracle cannot see: status bits,
// canonical forms, laziness, the odd cases of pack and reciprocal, rounding
// at the ends of the range, and the Stern-Brocot walk of from_double.

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
constexpr std::int32_t int32_top = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t int32_bottom = std::numeric_limits<std::int32_t>::min();

void expect_pair(const fr& f, long long num, long long den) {
  EXPECT_EQ(f.num, num);
  EXPECT_EQ(f.den, den);
}

TEST(fraction_t_construction, default_is_an_unnormalised_nan) {
  const fr f;
  expect_pair(f, 0, 0);
  EXPECT_EQ(f.status, 0);
  EXPECT_TRUE(f.is_nan());
}

TEST(fraction_t_construction, integer_is_packed_and_evaluated) {
  const fr f(-7);
  expect_pair(f, -7, 1);
  EXPECT_EQ(f.status, fr::canonical_status);
  EXPECT_EQ(f.get_eva(), -7.0);
}

TEST(fraction_t_construction, pair_is_taken_as_given) {
  const fr f(4, -6);
  expect_pair(f, 4, -6);
  EXPECT_EQ(f.status, 0);
  EXPECT_EQ(f.get_eva(), 0.0);
}

TEST(fraction_t_construction, canonical_values_spell_their_kind_in_the_integers) {
  struct row_t {
    fr f;
    long long num, den;
    double eva;
  };
  const row_t rows[] = {{fr::zero(), 0, 1, 0.0},
                        {fr::one(), 1, 1, 1.0},
                        {fr::positive_inf(), 1, 0, inf},
                        {fr::negative_inf(), -1, 0, -inf}};
  for (const row_t& r : rows) {
    expect_pair(r.f, r.num, r.den);
    EXPECT_EQ(r.f.status, fr::canonical_status);
    EXPECT_EQ(r.f.get_eva(), r.eva);
  }
  const fr nan = fr::nan();
  expect_pair(nan, 0, 0);
  EXPECT_EQ(nan.status, fr::canonical_status);
  EXPECT_TRUE(std::isnan(nan.get_eva()));
}

TEST(fraction_t_special, non_finite_arithmetic_follows_the_cross_products) {
  const fr pinf = fr::positive_inf();
  const fr one = fr::one();
  EXPECT_TRUE((pinf + pinf).is_nan());
  EXPECT_TRUE(eq(pinf + one, pinf));
  EXPECT_TRUE(eq(pinf * pinf, pinf));
  EXPECT_TRUE((pinf * fr::zero()).is_nan());
  EXPECT_TRUE((pinf / pinf).is_nan());
  EXPECT_TRUE(eq(fr(-3) / fr::zero(), fr::negative_inf()));
  EXPECT_TRUE((fr::zero() / fr::zero()).is_nan());
  EXPECT_EQ(compare(pinf, fr::negative_inf()), 0);
}

TEST(fraction_t_special, comparisons_with_nan_answer_equal) {
  const fr nan = fr::nan();
  const fr x(3, 4);
  EXPECT_EQ(compare(nan, x), 0);
  EXPECT_FALSE(lt(nan, x));
  EXPECT_FALSE(gt(x, nan));
  EXPECT_TRUE(le(nan, x));
  EXPECT_TRUE(ge(x, nan));
  fr packed_x = x;
  packed_x.pack();
  EXPECT_TRUE(eq(nan, fr::nan()));
  EXPECT_FALSE(eq(nan, packed_x));
  EXPECT_TRUE(eq(nan, x));  // x unpacked: the cross products vanish
}

TEST(fraction_t_in_place, answer_tells_whether_the_result_is_canonical) {
  fr f(1, 2);
  EXPECT_FALSE(f.add_assign(fr(1, 3)));
  expect_pair(f, 5, 6);
  EXPECT_EQ(f.status, 0);
  EXPECT_TRUE(f.sub_assign(fr(5, 6)));
  expect_pair(f, 0, 1);
  EXPECT_EQ(f.status, fr::canonical_status);
  fr g(2);
  EXPECT_TRUE(g.div_assign(fr::zero()));
  EXPECT_TRUE(eq(g, fr::positive_inf()));
}

TEST(fraction_t_in_place, operand_may_be_the_target_itself) {
  fr f(3, 4);
  f += f;
  EXPECT_TRUE(eq(f, fr(3, 2)));
  f = fr(-3, 4);
  f /= f;
  expect_pair(f, 12, 12);
  f = fr(3, 4);
  f *= f;
  expect_pair(f, 9, 16);
  f = fr(3, 4);
  EXPECT_TRUE(f.sub_assign(f));
}

TEST(fraction_t_in_place, integer_forms_scale_the_right_integer) {
  fr f(1, 3);
  EXPECT_FALSE(f.add_assign(2));
  expect_pair(f, 7, 3);
  EXPECT_FALSE(f.sub_assign(1));
  expect_pair(f, 4, 3);
  EXPECT_FALSE(f.mul_assign(-2));
  expect_pair(f, -8, 3);
  EXPECT_FALSE(f.div_assign(-4));
  expect_pair(f, 8, 12);
  EXPECT_FALSE(f.div_assign(std::numeric_limits<std::int64_t>::min()));
  EXPECT_TRUE(f.num < 0 && f.den > 0);
  EXPECT_TRUE(f.mul_assign(0));
  expect_pair(f, 0, 1);
  fr g(5);
  EXPECT_TRUE(g.div_assign(0));
  EXPECT_TRUE(eq(g, fr::positive_inf()));
}

TEST(fraction_t_unary, negate_keeps_a_cached_value_valid) {
  fr f(3, 4);
  f.evaluate();
  f.negate();
  EXPECT_TRUE(f.is_evaluated());
  EXPECT_EQ(f.get_eva(), -0.75);
  expect_pair(f, -3, 4);
  fr zero = fr::zero();
  zero.negate();
  EXPECT_EQ(zero.num.sign(), 0);
  EXPECT_EQ(zero.get_eva(), 0.0);
  fr a(-5, 2);
  a.evaluate();
  a.set_abs();
  EXPECT_EQ(a.get_eva(), 2.5);
  EXPECT_TRUE(eq(a.get_abs(), a));
}

TEST(fraction_t_unary, reciprocal_keeps_the_sign_on_the_numerator) {
  fr f(-2, 3);
  f.pack();
  f.evaluate();
  f.set_reciprocal();
  expect_pair(f, -3, 2);
  EXPECT_TRUE(f.is_packed());
  EXPECT_FALSE(f.is_evaluated());
  fr zero = fr::zero();
  zero.set_reciprocal();
  expect_pair(zero, 1, 0);  // not normalised, still marked packed
  EXPECT_EQ(zero.status, fr::packed_bit);
}

TEST(fraction_t_unary, getters_leave_the_source_alone) {
  const fr f(-2, 3);
  expect_pair(f.neg(), 2, 3);
  expect_pair(f.get_reciprocal(), -3, 2);
  expect_pair(f.get_square(), 4, 9);
  expect_pair(-f, 2, 3);
  expect_pair(f, -2, 3);
}

TEST(fraction_t_pack, sums_stay_unreduced_until_packed) {
  fr f = fr(1, 2) + fr(1, 2);
  expect_pair(f, 4, 4);
  EXPECT_FALSE(f.is_packed());
  f.pack();
  expect_pair(f, 1, 1);
  EXPECT_EQ(f.status, fr::packed_bit);
}

TEST(fraction_t_pack, negative_denominator_turns_only_with_a_common_factor) {
  fr a(1, -2);
  a.pack();
  expect_pair(a, 1, -2);
  EXPECT_TRUE(a.is_packed());
  fr b(2, -4);
  b.pack();
  expect_pair(b, -1, 2);
}

TEST(fraction_t_pack, needs_pack_when_an_integer_outgrows_32_bits) {
  EXPECT_FALSE(fr(0xffffffffLL, 0xffffffffLL).needs_pack());
  EXPECT_FALSE(fr(-0xffffffffLL, 3).needs_pack());
  EXPECT_TRUE(fr(0x100000000LL, 3).needs_pack());
  EXPECT_TRUE(fr(-0x100000000LL, 3).needs_pack());
  EXPECT_TRUE(fr(1, 0x100000000LL).needs_pack());
}

TEST(fraction_t_evaluate, value_packs_and_caches) {
  fr f(6, 8);
  EXPECT_EQ(f.value(), 0.75);
  expect_pair(f, 3, 4);
  EXPECT_EQ(f.status, fr::canonical_status);
}

TEST(fraction_t_evaluate, rough_value_caches_only_packed_integers) {
  fr unpacked(6, 8);
  EXPECT_EQ(unpacked.rough_value(), 0.75);
  EXPECT_EQ(unpacked.status, 0);
  expect_pair(unpacked, 6, 8);
  fr packed(3, 4);
  packed.pack();
  EXPECT_EQ(packed.rough_value(), 0.75);
  EXPECT_TRUE(packed.is_evaluated());
}

TEST(fraction_t_evaluate, huge_integers_still_give_a_finite_quotient) {
  const big_int_t huge = big_int_t(1) << 1100;
  fr f = geom::make_fraction(huge * 3 + 1, huge * 2);
  EXPECT_NEAR(f.value(), 1.5, 1e-15);
  fr g = geom::make_fraction(-(huge * 5), huge + 1);
  EXPECT_NEAR(g.value(), -5.0, 1e-15);
  fr tiny = geom::make_fraction(1, huge);
  EXPECT_EQ(tiny.value(), 0.0);
}

TEST(fraction_t_evaluate, simplify_replaces_the_value_by_a_near_simple_one) {
  fr f = geom::make_fraction(big_int_t(1000000001), big_int_t(3000000000LL));
  f.simplify(1e-6);
  expect_pair(f, 1, 3);
  EXPECT_EQ(f.status, fr::packed_bit);
}

TEST(fraction_t_compare, unreduced_and_reduced_forms_are_equal) {
  const fr half(1, 2);
  const fr two_quarters(2, 4);
  EXPECT_TRUE(eq(half, two_quarters));
  EXPECT_EQ(compare(half, two_quarters), 0);
  EXPECT_TRUE(le(half, two_quarters));
  EXPECT_TRUE(ge(half, two_quarters));
  fr a = half;
  fr b = two_quarters;
  a.pack();
  b.pack();
  EXPECT_TRUE(eq(a, b));
  EXPECT_TRUE(a == b);
}

TEST(fraction_t_compare, filter_decides_equal_denominators_and_opposite_signs) {
  EXPECT_EQ(compare(fr(3, 7), fr(5, 7)), -1);
  EXPECT_EQ(compare(fr(-3, 7), fr(-5, 7)), 1);
  EXPECT_EQ(compare(fr(-1, 1000), fr(1, 3)), -1);
  EXPECT_EQ(compare(fr(1, 3), fr::zero()), 1);
  EXPECT_EQ(compare(fr::negative_inf(), fr(1, 3)), -1);
}

TEST(fraction_t_compare, integer_forms_compare_against_den_times_i) {
  const fr f(7, 2);
  EXPECT_TRUE(gt_int(f, 3));
  EXPECT_TRUE(lt_int(f, 4));
  EXPECT_TRUE(le_int(fr(8, 2), 4));
  EXPECT_TRUE(ge_int(fr(8, 2), 4));
  EXPECT_TRUE(eq_int(fr(8, 2), 4));
  EXPECT_FALSE(eq_int(f, 3));
}

TEST(fraction_t_rounding, floor_and_ceiling_of_small_values) {
  EXPECT_EQ(fr(-3, 2).floor_int(), -2);
  EXPECT_EQ(fr(-3, 2).ceil_int(), -1);
  EXPECT_EQ(fr(-4, 2).floor_int(), -2);
  EXPECT_EQ(fr(-4, 2).ceil_int(), -2);
  EXPECT_EQ(fr(3, 2).ceil_int(), 2);
  EXPECT_EQ(fr(3, 2).floor_int(), 1);
  EXPECT_EQ(fr(4, 2).ceil_int(), 2);
  EXPECT_EQ(fr::zero().floor_int(), 0);
}

TEST(fraction_t_rounding, ends_of_the_range_saturate_then_wrap) {
  const std::int64_t big = 1LL << 40;
  EXPECT_EQ(fr(big, 1).floor_int(), int32_top);
  EXPECT_EQ(fr(-big, 1).ceil_int(), int32_bottom);
  // The last -1 of floor and +1 of ceil are taken in 32 bits.
  EXPECT_EQ(fr(-big, 1).floor_int(), int32_top);
  EXPECT_EQ(fr(big, 1).ceil_int(), int32_bottom);
  EXPECT_EQ(fr::positive_inf().floor_int(), int32_top);
  EXPECT_EQ(fr::negative_inf().ceil_int(), int32_bottom);
  EXPECT_EQ(fr::nan().floor_int(), 0);
}

TEST(from_double, first_mediant_within_the_resolution) {
  expect_pair(geom::from_double(0.1, 0.02), 1, 9);
  expect_pair(geom::from_double(0.1, 0.001), 1, 10);
  expect_pair(geom::from_double(-2.5, 1e-9), -5, 2);
  const fr f = geom::from_double(0.1, 0.001);
  EXPECT_EQ(f.status, fr::packed_bit);
  EXPECT_EQ(f.get_eva(), 0.0);
}

TEST(from_double, values_below_the_resolution_and_special_values) {
  expect_pair(geom::from_double(0.004, 0.01), 0, 1);
  expect_pair(geom::from_double(-0.004, 0.01), 0, 1);
  expect_pair(geom::from_double(0.0, 1e-9), 0, 1);
  expect_pair(geom::from_double(std::nan(""), 1e-9), 0, 0);
  expect_pair(geom::from_double(inf, 1e-9), 1, 0);
  expect_pair(geom::from_double(-inf, 1e-9), -1, 0);
  EXPECT_EQ(geom::from_double(std::nan(""), 1e-9).status, fr::packed_bit);
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
