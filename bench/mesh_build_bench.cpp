// Welding a 1,000,000-triangle closed soup (a finely tessellated sphere of
// 50 mm diameter) into the floating mesh and into the exact mesh at
// resolution 1e-4. Prints the time per build and the memory the built mesh
// holds ("mesh_MB", resident growth while it lives) and the process peak
// ("peak_MB").

#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <fstream>

#include "geom/topo/topo_stl3.h"
#include "geom/topo/topo_stl3wfr_t.h"
#include "soups.h"

namespace {

const std::vector<geom::stl_tri_t>& sphere() {
  static const auto soup = quvra_test::sphere_soup(25.0, 500, 1001);
  return soup;
}

double resident_mb() {
  long pages = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> pages >> resident;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

double peak_mb() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1e3;
}

template <class Build>
void run(benchmark::State& state, Build build) {
  const auto* records = reinterpret_cast<const double*>(sphere().data());
  double held = 0;
  for (auto _ : state) {
    const double before = resident_mb();
    auto mesh = build(records, sphere().size());
    held = resident_mb() - before;
    benchmark::DoNotOptimize(mesh.get());
    state.PauseTiming();
    mesh.reset();
    state.ResumeTiming();
  }
  state.counters["triangles"] = static_cast<double>(sphere().size());
  state.counters["mesh_MB"] = held;
  state.counters["peak_MB"] = peak_mb();
}

void BM_build_floating_mesh(benchmark::State& state) {
  run(state, [](const double* r, std::size_t n) { return std::make_unique<geom::topo_stl3d>(r, n); });
}

void BM_build_exact_mesh(benchmark::State& state) {
  run(state, [](const double* r, std::size_t n) { return std::make_unique<geom::topo_stl3wfr_t>(r, n, 1e-4); });
}

BENCHMARK(BM_build_floating_mesh)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_build_exact_mesh)->Unit(benchmark::kMillisecond)->Iterations(2);

}  // namespace

BENCHMARK_MAIN();
