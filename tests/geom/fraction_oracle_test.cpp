// Randomised comparison of fraction_t with GMP's rationals. Finite values are
// checked against mpq_class; NaN and the infinities against the extended
// arithmetic that the cross-product formulas imply (inf + inf is NaN, x/0 is
// an infinity of x's sign, a NaN compares equal to everything).

#include <gmpxx.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "geom/fraction_t.h"

namespace {

using geom::big_int_t;
using geom::fr;

enum class kind_t { finite, pos_inf, neg_inf, nan };

// What a fraction means: an extended real with one NaN.
struct model_t {
  kind_t kind = kind_t::nan;
  mpq_class q;  // the value when finite

  int sign() const {
    if (kind == kind_t::finite) return sgn(q);
    return kind == kind_t::pos_inf ? 1 : (kind == kind_t::neg_inf ? -1 : 0);
  }
  bool is_inf() const { return kind == kind_t::pos_inf || kind == kind_t::neg_inf; }
};

model_t finite(const mpq_class& q) { return {kind_t::finite, q}; }
model_t inf_of_sign(int s) { return {s > 0 ? kind_t::pos_inf : kind_t::neg_inf, 0}; }
model_t nan_model() { return {kind_t::nan, 0}; }

struct sample_t {
  fr f;
  model_t m;
};

big_int_t to_big(const mpz_class& z) { return big_int_t(z.get_str()); }
mpz_class to_mpz(const big_int_t& n) { return mpz_class(n.str()); }

std::string describe(const fr& f) { return f.num.str() + "/" + f.den.str(); }

// Random integers from a few bits to 1000 bits, and values built from them:
// packed and unpacked, with common factors, zero, NaN and both infinities.
class sample_source_t {
 public:
  explicit sample_source_t(std::uint64_t seed) : _rng(seed) {}

  sample_t next() {
    switch (_rng() % 16) {
      case 0:
        return {fr::nan(), nan_model()};
      case 1:
        return {fr::positive_inf(), inf_of_sign(1)};
      case 2:
        return {fr::negative_inf(), inf_of_sign(-1)};
      case 3:
        return {fr::zero(), finite(0)};
      default:
        return _finite();
    }
  }

 private:
  std::mt19937_64 _rng;

  unsigned _bits() {
    static constexpr unsigned bands[][2] = {{1, 8}, {9, 31}, {32, 70}, {100, 200}, {500, 1000}};
    const auto& band = bands[_rng() % 5];
    return band[0] + static_cast<unsigned>(_rng() % (band[1] - band[0] + 1));
  }

  // A positive integer of exactly bits bits.
  mpz_class _magnitude(unsigned bits) {
    mpz_class z = 0;
    for (unsigned filled = 0; filled < bits; filled += 64) {
      z <<= 64;
      z += mpz_class(std::to_string(_rng()));
    }
    mpz_class top = 1;
    top <<= bits - 1;
    z %= top;
    return z + top;
  }

  sample_t _finite() {
    mpz_class num = _magnitude(_bits());
    mpz_class den = _magnitude(_bits());
    if (_rng() % 2) num = -num;
    if (_rng() % 3 == 0) {
      const mpz_class common = _magnitude(1 + static_cast<unsigned>(_rng() % 80));
      num *= common;
      den *= common;
    }
    mpq_class q(num, den);
    q.canonicalize();
    fr f = geom::make_fraction(to_big(num), to_big(den));
    if (_rng() % 2) f.pack();
    return {f, finite(q)};
  }
};

model_t add_model(const model_t& a, const model_t& b) {
  if (a.kind == kind_t::nan || b.kind == kind_t::nan) return nan_model();
  if (a.is_inf() && b.is_inf()) return nan_model();
  if (a.is_inf()) return a;
  if (b.is_inf()) return b;
  return finite(a.q + b.q);
}

model_t negated(const model_t& a) {
  if (a.is_inf()) return inf_of_sign(-a.sign());
  return {a.kind, -a.q};
}

model_t mul_model(const model_t& a, const model_t& b) {
  if (a.kind == kind_t::nan || b.kind == kind_t::nan) return nan_model();
  if (a.is_inf() || b.is_inf()) {
    const int s = a.sign() * b.sign();
    return s == 0 ? nan_model() : inf_of_sign(s);
  }
  return finite(a.q * b.q);
}

model_t div_model(const model_t& a, const model_t& b) {
  if (a.kind == kind_t::nan || b.kind == kind_t::nan) return nan_model();
  if (b.is_inf()) return a.is_inf() ? nan_model() : finite(0);
  if (b.sign() == 0) return a.sign() == 0 ? nan_model() : inf_of_sign(a.sign());
  if (a.is_inf()) return inf_of_sign(a.sign() * b.sign());
  return finite(a.q / b.q);
}

// The three-way order that the cross products give.
int compare_model(const model_t& a, const model_t& b) {
  if (a.kind == kind_t::nan || b.kind == kind_t::nan) return 0;
  if (a.is_inf() && b.is_inf()) return 0;
  if (a.is_inf()) return a.sign();
  if (b.is_inf()) return -b.sign();
  return cmp(a.q, b.q) < 0 ? -1 : (cmp(a.q, b.q) > 0 ? 1 : 0);
}

// Packed values compare by structure, so two infinities differ by sign and
// a NaN equals only a NaN; otherwise the cross products decide.
bool eq_model(const sample_t& a, const sample_t& b) {
  if (!a.f.is_packed() || !b.f.is_packed()) return compare_model(a.m, b.m) == 0;
  if (a.m.kind != b.m.kind) return false;
  return a.m.kind != kind_t::finite || a.m.q == b.m.q;
}

void expect_value(const fr& got, const model_t& want) {
  switch (want.kind) {
    case kind_t::nan:
      EXPECT_TRUE(got.is_nan());
      break;
    case kind_t::pos_inf:
    case kind_t::neg_inf:
      EXPECT_FALSE(got.is_finite());
      EXPECT_EQ(got.num, want.sign());
      break;
    case kind_t::finite: {
      ASSERT_TRUE(got.is_finite());
      mpq_class q(to_mpz(got.num), to_mpz(got.den));
      q.canonicalize();
      EXPECT_EQ(q, want.q);
      break;
    }
  }
}

// The result of arithmetic: the value, in canonical form where one applies.
void expect_result(const fr& got, const model_t& want) {
  expect_value(got, want);
  // Non-finite and zero results are canonical; all others unreduced.
  const bool canonical = want.kind != kind_t::finite || sgn(want.q) == 0;
  EXPECT_EQ(got.status, canonical ? fr::canonical_status : 0);
  if (canonical) {
    EXPECT_TRUE(got.num >= -1 && got.num <= 1 && got.den >= 0 && got.den <= 1);
  }
}

constexpr std::int32_t int32_top = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t int32_bottom = std::numeric_limits<std::int32_t>::min();

// Beyond the 32-bit range floor_int answers the top on either side (above by
// saturation, below by the wrap of its final -1), and ceil_int the bottom.
std::int32_t rounded_model(const model_t& m, void (*divide)(mpz_ptr, mpz_srcptr, mpz_srcptr),
                           std::int32_t beyond_range) {
  if (m.kind == kind_t::nan) return 0;
  if (m.is_inf()) return m.sign() > 0 ? int32_top : int32_bottom;
  mpz_class r;
  divide(r.get_mpz_t(), m.q.get_num_mpz_t(), m.q.get_den_mpz_t());
  if (r > int32_top || r < int32_bottom) return beyond_range;
  return static_cast<std::int32_t>(r.get_si());
}

std::int32_t floor_model(const model_t& m) { return rounded_model(m, mpz_fdiv_q, int32_top); }
std::int32_t ceil_model(const model_t& m) { return rounded_model(m, mpz_cdiv_q, int32_bottom); }

constexpr int pair_count = 3000;

class fraction_oracle : public ::testing::Test {
 protected:
  std::vector<sample_t> samples;

  void SetUp() override {
    sample_source_t source(20240611);
    for (int i = 0; i < 2 * pair_count; ++i) samples.push_back(source.next());
  }
};

TEST_F(fraction_oracle, arithmetic_matches_rationals_and_extended_rules) {
  for (int i = 0; i < pair_count; ++i) {
    const sample_t& a = samples[2 * i];
    const sample_t& b = samples[2 * i + 1];
    SCOPED_TRACE(describe(a.f) + " and " + describe(b.f));
    const model_t sum = add_model(a.m, b.m);
    const model_t difference = add_model(a.m, negated(b.m));
    const model_t product = mul_model(a.m, b.m);
    const model_t quotient = div_model(a.m, b.m);
    expect_result(a.f + b.f, sum);
    expect_result(a.f - b.f, difference);
    expect_result(a.f * b.f, product);
    expect_result(a.f / b.f, quotient);
    fr in_place = a.f;
    in_place += b.f;
    expect_result(in_place, sum);
    in_place = a.f;
    in_place -= b.f;
    expect_result(in_place, difference);
    in_place = a.f;
    in_place *= b.f;
    expect_result(in_place, product);
    in_place = a.f;
    in_place /= b.f;
    expect_result(in_place, quotient);
  }
}

TEST_F(fraction_oracle, comparisons_match_the_order_of_rationals) {
  for (int i = 0; i < pair_count; ++i) {
    const sample_t& a = samples[2 * i];
    const sample_t& b = samples[2 * i + 1];
    SCOPED_TRACE(describe(a.f) + " and " + describe(b.f));
    const int c = compare_model(a.m, b.m);
    EXPECT_EQ(compare(a.f, b.f), c);
    EXPECT_EQ(compare(b.f, a.f), -c);
    EXPECT_EQ(lt(a.f, b.f), c < 0);
    EXPECT_EQ(le(a.f, b.f), c <= 0);
    EXPECT_EQ(gt(a.f, b.f), c > 0);
    EXPECT_EQ(ge(a.f, b.f), c >= 0);
    EXPECT_EQ(eq(a.f, b.f), eq_model(a, b));
    EXPECT_EQ(compare(a.f, a.f), 0);
  }
}

// Each integer's conversion and the division round once, and GMP truncates.
TEST_F(fraction_oracle, pack_rounding_and_value_match_the_rational) {
  for (const sample_t& s : samples) {
    SCOPED_TRACE(describe(s.f));
    EXPECT_EQ(s.f.floor_int(), floor_model(s.m));
    EXPECT_EQ(s.f.ceil_int(), ceil_model(s.m));
    fr f = s.f;
    f.pack();
    EXPECT_TRUE(f.is_packed());
    expect_value(f, s.m);
    if (s.m.kind != kind_t::finite) continue;
    EXPECT_EQ(to_mpz(f.num), s.m.q.get_num());
    EXPECT_EQ(to_mpz(f.den), s.m.q.get_den());
    const fr scaled = geom::make_fraction(s.f.num * 6, s.f.den * 6);
    EXPECT_EQ(compare(s.f, scaled), 0);
    EXPECT_TRUE(eq(s.f, scaled));
    fr packed_scaled = scaled;
    packed_scaled.pack();
    EXPECT_TRUE(eq(f, packed_scaled));
    const double want = s.m.q.get_d();
    EXPECT_NEAR(f.value(), want, std::fabs(want) * 1e-15);
  }
}

}  // namespace
