// A 100 x 100 x 30 mm block cut by a 6 mm flat end mill along a pocket path
// of 2,000 short linear moves (zigzag rows 4 mm apart, 0.4 mm moves, 3 mm
// deep), each move a sweep built and subtracted as a host does it. Prints
// moves per second at 0.2 mm and 0.1 mm cells ("moves" rate) and the memory
// the stock holds at the end ("stock_MB": its live heap allocations; resident
// growth would depend on how much the build left free for the cut to reuse).

#include <benchmark/benchmark.h>
#include <malloc.h>

#include "cbtr/cached_tris.h"
#include "cbtr/substraction.h"
#include "geom/Stl3d.h"
#include "geom/stl3d.h"
#include "mech/apt_t.h"
#include "soups.h"

namespace {

// The stock and the cuts live on this thread, so the main arena holds them.
double heap_mb() {
  const struct mallinfo2 info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd) / 1e6;
}

std::array<double, 16> at(double x, double y, double z) { return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1}; }

std::vector<std::array<double, 3>> pocket_path() {
  std::vector<std::array<double, 3>> points;
  for (int row = 0; row < 20; ++row) {
    const double y = 30 + 4 * row;
    for (int i = 0; i <= 100; ++i) {
      const double x = row % 2 == 0 ? 30 + 0.4 * i : 70 - 0.4 * i;
      points.push_back({x, y, 27});
    }
  }
  return points;
}

void BM_pocket(benchmark::State& state) {
  const double cell = static_cast<double>(state.range(0)) / 1000;
  const geom::Stl3d tool = mech::apt_t{6, 0, 3, 0, 0, 0, 30}.get_Stl3d(32, 4);
  topo_stl3d* mesh = topo_stl3d__new_by_stl3d(tool.stl.get());
  topo_stl3wfr_t* exact = topo_stl3wfr__new(static_cast<int32_t>(stl3d__tris_size(tool.stl.get())),
                                            stl3d__tris_data(tool.stl.get()), 0.001 * cell);
  const auto block = quvra_test::box_soup(0, 0, 0, 100, 100, 30);
  stl3d_t* block_soup = stl3d__new_by_copy_array(reinterpret_cast<const double*>(block.data()), block.size());
  const auto path = pocket_path();
  std::size_t moves = 0;
  double stock_mb = 0;
  for (auto _ : state) {
    state.PauseTiming();
    const double before = heap_mb();
    cube_tree_t* stock = cube_tree__new(block_soup, cell, nullptr, nullptr);
    state.ResumeTiming();
    for (std::size_t i = 1; i < path.size(); ++i) {
      const auto start = at(path[i - 1][0], path[i - 1][1], path[i - 1][2]);
      const auto end = at(path[i][0], path[i][1], path[i][2]);
      cached_tris_t* sweep = new_sweeping_cached_tris(mesh, exact, start.data(), end.data(), 0.001 * cell, true);
      substraction_t* s = cube_tree__substract_by_cached_tris(stock, sweep, cell, false, false);
      substraction__dtor(s);
      delete_cached_tris(sweep);
      ++moves;
    }
    state.PauseTiming();
    stock_mb = heap_mb() - before;
    cube_tree__delete(stock);
    state.ResumeTiming();
  }
  state.counters["moves"] = benchmark::Counter(static_cast<double>(moves), benchmark::Counter::kIsRate);
  state.counters["stock_MB"] = stock_mb;
  stl3d__delete(block_soup);
  topo_stl3wfr__delete(exact);
  topo_stl3d__delete(mesh);
}

BENCHMARK(BM_pocket)->Arg(200)->Arg(100)->Unit(benchmark::kSecond)->Iterations(1);

}  // namespace

BENCHMARK_MAIN();
