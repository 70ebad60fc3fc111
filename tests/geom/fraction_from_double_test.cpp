// from_double crosses runs of the Stern-Brocot walk at once: its answers
// must be those of the walk that takes one mediant at a time, and huge
// values must be answered without walking to them.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <limits>
#include <optional>
#include <random>
#include <string>

#include "geom/fraction_t.h"
#include "geom/fraction_unlimited.h"

using geom::fr;

namespace {

using wide_t = __int128;

struct pair_t {
  wide_t num;
  wide_t den;
  bool operator==(const pair_t&) const = default;
};

// The walk one mediant at a time, as the rule states it; nullopt when it
// needs more than max_steps.
std::optional<pair_t> slow_walk(double value, double resolution, std::int64_t max_steps) {
  if (std::isnan(value)) return pair_t{0, 0};
  if (resolution > std::fabs(value)) return pair_t{0, 1};
  if (std::isinf(value)) return pair_t{value > 0 ? 1 : -1, 0};
  const wide_t limit = std::numeric_limits<std::int64_t>::max();
  pair_t lo = value > 0 ? pair_t{0, 1} : pair_t{-1, 0};
  pair_t hi = value > 0 ? pair_t{1, 0} : pair_t{0, 1};
  for (std::int64_t step = 0; step < max_steps; ++step) {
    if (lo.den > limit || hi.den > limit) return lo.den > limit ? hi : lo;
    const pair_t m{lo.num + hi.num, lo.den + hi.den};
    const double d = static_cast<double>(m.num) / static_cast<double>(m.den);
    if (resolution > std::fabs(d - value)) {
      if (m.den > limit) return lo.den >= hi.den ? lo : hi;
      return m;
    }
    (value > d ? lo : hi) = m;
  }
  return std::nullopt;
}

pair_t as_pair(const fr& f) {
  return {static_cast<wide_t>(f.num.convert_to<long long>()), static_cast<wide_t>(f.den.convert_to<long long>())};
}

std::string text(wide_t v) { return std::to_string(static_cast<long long>(v)); }

// Compares both walks on count values drawn by draw_value, at resolutions
// 10^e for e drawn from exponents; values whose slow walk is too long are
// skipped, but most must be compared.
template <class Draw>
void compare_walks(std::uint64_t seed, Draw draw_value, double min_exponent, double max_exponent) {
  std::mt19937_64 rng(seed);
  std::uniform_real_distribution<double> exponents(min_exponent, max_exponent);
  int compared = 0;
  const int count = 1500;
  for (int i = 0; i < count; ++i) {
    const double v = draw_value(rng);
    const double r = std::pow(10.0, exponents(rng));
    if (!geom::from_double_bounded(v, r)) continue;
    const std::optional<pair_t> slow = slow_walk(v, r, 100'000);
    if (!slow) continue;
    ++compared;
    const pair_t fast = as_pair(geom::from_double(v, r));
    ASSERT_EQ(fast, *slow) << v << " at " << r << ": " << text(fast.num) << "/" << text(fast.den) << " against "
                           << text(slow->num) << "/" << text(slow->den);
  }
  EXPECT_GT(compared, count * 3 / 4);
}

}  // namespace

TEST(from_double_runs, same_answers_as_single_steps_across_magnitudes) {
  compare_walks(
      11, [](std::mt19937_64& rng) { return std::uniform_real_distribution<double>(-5e4, 5e4)(rng); }, -12, 0);
  compare_walks(
      12,
      [](std::mt19937_64& rng) {
        const double v = std::pow(10.0, std::uniform_real_distribution<double>(-6, 6)(rng));
        return rng() & 1 ? v : -v;
      },
      -14.4, 2);
}

// Values that sit on or next to simple fractions make the longest runs and
// the mediants that land exactly on the value.
TEST(from_double_runs, same_answers_next_to_simple_fractions) {
  compare_walks(
      13,
      [](std::mt19937_64& rng) {
        const double den = static_cast<double>(1 + rng() % 5000);
        const double num = static_cast<double>(static_cast<std::int64_t>(rng() % 2'000'001) - 1'000'000);
        const double nudge = std::pow(10.0, std::uniform_real_distribution<double>(-15, -3)(rng));
        return num / den + (rng() % 3 == 0 ? 0.0 : rng() & 1 ? nudge : -nudge);
      },
      -14, -1);
}

TEST(from_double_runs, huge_values_are_answered_without_the_long_walk) {
  const fr f = geom::from_double(1e11 + 0.5, 0.25);
  EXPECT_EQ(as_pair(f), (pair_t{200000000001, 2}));
  const fr g = geom::from_double(-4503599627370495.0, 1e-300);
  EXPECT_EQ(as_pair(g), (pair_t{-4503599627370495, 1}));
  // Ten billion single steps down 1/k: the first k whose 1/k comes within.
  const pair_t h = as_pair(geom::from_double(1e-10, 0x1p-48));
  ASSERT_EQ(h.num, 1);
  const auto within = [](wide_t k) { return 0x1p-48 > std::fabs(1.0 / static_cast<double>(k) - 1e-10); };
  EXPECT_TRUE(within(h.den));
  EXPECT_FALSE(within(h.den - 1));
}

TEST(from_double_bounds, the_boundary_refuses_what_the_walk_cannot_bound) {
  for (const auto& [v, r] : {std::pair{1e300, 1.0}, std::pair{0x1p53, 1e-3}, std::pair{0.3, 1e-20}, std::pair{5.0, 0.0},
                             std::pair{5.0, -1.0}, std::pair{5.0, std::nan("")}}) {
    EXPECT_FALSE(geom::from_double_bounded(v, r)) << v << " at " << r;
    EXPECT_EQ(fraction_unlimited__new_val(v, r), nullptr) << v << " at " << r;
  }
  for (const auto& [v, r] : {std::pair{1e300, 1e301}, std::pair{std::nan(""), 0.0}, std::pair{-HUGE_VAL, 0.0},
                             std::pair{0x1p53 - 1, 1e-300}, std::pair{0.3, 0x1p-48}}) {
    fraction_unlimited_t* f = fraction_unlimited__new_val(v, r);
    EXPECT_NE(f, nullptr) << v << " at " << r;
    fraction_unlimited__delete(f);
  }
}

TEST(from_double_bounds, simplify_leaves_a_value_it_cannot_bound) {
  fraction_unlimited_t* f = fraction_unlimited__new_num_den(std::numeric_limits<std::int64_t>::max(), 3);
  fraction_unlimited__simplify(f, 1e-3);
  char* num = fraction_unlimited__get_num_str(f);
  EXPECT_STREQ(num, "9223372036854775807");
  fraction_unlimited__free_str(num);
  fraction_unlimited__simplify(f, 1e19);
  EXPECT_TRUE(fraction_unlimited__is_zero(f));
  fraction_unlimited__delete(f);
}

// The fuzzer's input: a numerator byte form, then the double value and
// resolution that new_val took (a resolution of zero, which ended the
// process).
TEST(from_double_bounds, fuzzed_value_and_resolution_are_refused_not_fatal) {
  std::ifstream in(std::string(QUVRA_TEST_DATA_DIR) + "/bad_input/fraction_new_val_zero_resolution.bin",
                   std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(in)), {});
  ASSERT_EQ(bytes.size(), 17u);
  double v = 0;
  double r = 0;
  std::memcpy(&v, bytes.data() + 1, 8);
  std::memcpy(&r, bytes.data() + 9, 8);
  EXPECT_EQ(fraction_unlimited__new_val(v, r), nullptr);
}
