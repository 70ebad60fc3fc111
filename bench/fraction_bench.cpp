// Cost of the exact numbers: nanoseconds per operation for integers below 32
// bits and for integers of 100 to 200 bits, and heap allocations per
// operation (the "allocs" column), which must be 0 for small values.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <vector>

#include "allocation_counter.h"
#include "geom/fraction_geom_util"
#include "geom/fraction_t.h"

namespace {

using geom::big_int_t;
using geom::fr;

// Inputs by size class: the argument is the largest bit count of an integer.
constexpr int small_bits = 31;
constexpr int big_bits = 200;
constexpr std::size_t pool_size = 1024;

class input_pool_t {
 public:
  // Values of up to 3/4 of max_bits, unreduced copies by a common factor of
  // up to 1/4 more, as sums and products of geometry arrive at pack.
  explicit input_pool_t(int max_bits) : _rng(static_cast<std::uint64_t>(max_bits)) {
    const int min_bits = max_bits > small_bits ? 100 : 1;
    const int value_bits = max_bits * 3 / 4;
    for (std::size_t i = 0; i < pool_size; ++i) {
      fr f = geom::make_fraction(_integer(min_bits, value_bits, true), _integer(min_bits, value_bits, false));
      const big_int_t common = _integer(1, max_bits / 4, false);
      unpacked.push_back(geom::make_fraction(f.num * common, f.den * common));
      f.pack();
      values.push_back(f);
    }
  }

  std::vector<fr> values;
  std::vector<fr> unpacked;

 private:
  std::mt19937_64 _rng;

  // Exactly bits bits, bits drawn from [min_bits, max_bits].
  big_int_t _integer(int min_bits, int max_bits, bool signed_value) {
    const int bits = min_bits + static_cast<int>(_rng() % (max_bits - min_bits + 1));
    big_int_t n = 0;
    for (int filled = 0; filled < bits; filled += 64) n = (n << 64) | _rng();
    const big_int_t top = big_int_t(1) << (bits - 1);
    n = n % top + top;
    return signed_value && _rng() % 2 ? big_int_t(-n) : n;
  }
};

const input_pool_t& pool(int max_bits) {
  static const input_pool_t small(small_bits);
  static const input_pool_t big(big_bits);
  return max_bits == small_bits ? small : big;
}

// Runs op on consecutive pool entries and reports allocations per call.
template <class Op>
void run(benchmark::State& state, Op op) {
  const std::uint64_t before = allocation_count();
  std::size_t i = 0;
  for (auto _ : state) {
    op(i);
    i = (i + 1) % pool_size;
  }
  const double allocations = static_cast<double>(allocation_count() - before);
  state.counters["allocs"] = allocations / static_cast<double>(state.iterations());
}

void add(benchmark::State& state) {
  const auto& v = pool(static_cast<int>(state.range(0))).values;
  run(state, [&](std::size_t i) { benchmark::DoNotOptimize(v[i] + v[(i + 1) % pool_size]); });
}

void mul(benchmark::State& state) {
  const auto& v = pool(static_cast<int>(state.range(0))).values;
  run(state, [&](std::size_t i) { benchmark::DoNotOptimize(v[i] * v[(i + 1) % pool_size]); });
}

void compare(benchmark::State& state) {
  const auto& v = pool(static_cast<int>(state.range(0))).values;
  run(state, [&](std::size_t i) { benchmark::DoNotOptimize(geom::compare(v[i], v[(i + 1) % pool_size])); });
}

// A copy of the unreduced value is packed each time; the copy row gives the
// part of that which is not the gcd.
void copy(benchmark::State& state) {
  const auto& u = pool(static_cast<int>(state.range(0))).unpacked;
  run(state, [&](std::size_t i) {
    fr f = u[i];
    benchmark::DoNotOptimize(f);
  });
}

void pack(benchmark::State& state) {
  const auto& u = pool(static_cast<int>(state.range(0))).unpacked;
  run(state, [&](std::size_t i) {
    fr f = u[i];
    f.pack();
    benchmark::DoNotOptimize(f);
  });
}

// Keys are hashed packed, as a map holds them.
void hash(benchmark::State& state) {
  std::vector<fr> v = pool(static_cast<int>(state.range(0))).values;
  run(state, [&](std::size_t i) { benchmark::DoNotOptimize(geom::hash(v[i])); });
}

// Grid coordinates of a model in millimetres at a resolution of 1e-7:
// fractions below 32 bits, reached in up to about a thousand mediants.
void from_double_grid(benchmark::State& state) {
  std::mt19937_64 rng(5);
  std::vector<double> values;
  for (std::size_t i = 0; i < pool_size; ++i)
    values.push_back(static_cast<double>(static_cast<int>(rng() % 200001) - 100000) / 1000.0);
  run(state, [&](std::size_t i) { benchmark::DoNotOptimize(geom::from_double(values[i], 1e-7)); });
}

// Values in (0, 1) at a resolution of 1e-15: denominators near 50 bits.
void from_double_fine(benchmark::State& state) {
  std::mt19937_64 rng(6);
  std::uniform_real_distribution<double> unit(0.0, 1.0);
  std::vector<double> values;
  for (std::size_t i = 0; i < pool_size; ++i) values.push_back(unit(rng));
  run(state, [&](std::size_t i) { benchmark::DoNotOptimize(geom::from_double(values[i], 1e-15)); });
}

BENCHMARK(add)->ArgName("bits")->Arg(small_bits)->Arg(big_bits);
BENCHMARK(mul)->ArgName("bits")->Arg(small_bits)->Arg(big_bits);
BENCHMARK(compare)->ArgName("bits")->Arg(small_bits)->Arg(big_bits);
BENCHMARK(copy)->ArgName("bits")->Arg(small_bits)->Arg(big_bits);
BENCHMARK(pack)->ArgName("bits")->Arg(small_bits)->Arg(big_bits);
BENCHMARK(hash)->ArgName("bits")->Arg(small_bits)->Arg(big_bits);
BENCHMARK(from_double_grid);
BENCHMARK(from_double_fine);

}  // namespace

BENCHMARK_MAIN();
