// The first cut of a path: a 6 mm ball end mill, kept analytic, plunged 3 mm
// deep into a 100 x 100 x 30 mm block at 100 places on a grid, at 0.2 mm and
// 0.1 mm cells. Prints plunges per second ("plunges" rate).

#include <benchmark/benchmark.h>

#include "cbtr/stick_convex.h"
#include "cbtr/substraction.h"
#include "geom/mat4d.h"
#include "geom/stl3d.h"
#include "soups.h"

namespace {

void BM_stick_plunge(benchmark::State& state) {
  const double cell = static_cast<double>(state.range(0)) / 1000;
  const stick_convex_t ball{{{cbtr::stick_sphere, {0, 3, 3, 3}}, {cbtr::stick_cylinder, {3, 40, 3}}}};
  const auto block = quvra_test::box_soup(0, 0, 0, 100, 100, 30);
  stl3d_t* block_soup = stl3d__new_by_copy_array(reinterpret_cast<const double*>(block.data()), block.size());
  std::size_t plunges = 0;
  for (auto _ : state) {
    state.PauseTiming();
    cube_tree_t* stock = cube_tree__new(block_soup, cell, nullptr, nullptr);
    state.ResumeTiming();
    for (int i = 0; i < 100; ++i) {
      geom::mat4d at = geom::mat4d::identity();
      at.m[12] = 10.3 + 8 * (i % 10), at.m[13] = 10.7 + 8 * (i / 10), at.m[14] = 27;
      substraction__dtor(cube_tree__substract_by_init_stick_convex(stock, &ball, &at, cell, false, false));
      ++plunges;
    }
    state.PauseTiming();
    cube_tree__delete(stock);
    state.ResumeTiming();
  }
  state.counters["plunges"] = benchmark::Counter(static_cast<double>(plunges), benchmark::Counter::kIsRate);
  stl3d__delete(block_soup);
}

BENCHMARK(BM_stick_plunge)->Arg(200)->Arg(100)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace

BENCHMARK_MAIN();
