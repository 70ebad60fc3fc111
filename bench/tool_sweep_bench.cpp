// Tool volumes of a bull-nose end mill (10 mm, corner radius 2, 30 mm long,
// about 2,000 triangles) on short moves, up to and including the filtered
// exact triangles: linear sweeps of a 0.5 mm translation and convex sweeps of
// a move that also turns by 3 degrees. Items per second are sweeps per
// second.

#include <benchmark/benchmark.h>

#include <cmath>

#include "cbtr/tool/cached_tris_t.h"
#include "cbtr/tool/sweep_chooser.h"
#include "geom/Stl3d.h"
#include "mech/apt_t.h"

namespace {

constexpr double resolution = 1e-4;

struct tool_meshes {
  geom::Stl3d soup;
  std::unique_ptr<geom::topo_stl3d> mesh;
  std::unique_ptr<geom::topo_stl3wfr_t> exact;
};

tool_meshes& bull_nose() {
  static tool_meshes tool = [] {
    tool_meshes t{mech::apt_t{10, 2, 3, 2, 0, 0, 30}.get_Stl3d(64, 14), nullptr, nullptr};
    t.mesh = std::make_unique<geom::topo_stl3d>(*t.soup.stl);
    const auto* records = reinterpret_cast<const double*>(t.soup.stl->tris.data());
    t.exact = std::make_unique<geom::topo_stl3wfr_t>(records, t.soup.stl->tris.size(), resolution);
    return t;
  }();
  return tool;
}

geom::mat4d pose(double turn, double tx, double ty, double tz) {
  const double c = std::cos(turn), s = std::sin(turn);
  return {{c, 0, -s, 0, 0, 1, 0, 0, s, 0, c, 0, tx, ty, tz, 1}};
}

void run(benchmark::State& state, const geom::mat4d& start, const geom::mat4d& end) {
  tool_meshes& tool = bull_nose();
  std::size_t tris = 0;
  for (auto _ : state) {
    cbtr::cached_tris_t volume(cbtr::build_sweeping(*tool.mesh, *tool.exact, start, end, resolution, true));
    tris = volume.size();
    benchmark::DoNotOptimize(tris);
  }
  state.SetItemsProcessed(state.iterations());
  state.counters["tool_tris"] = static_cast<double>(tool.mesh->tri_count());
  state.counters["volume_tris"] = static_cast<double>(tris);
}

void BM_linear_sweep(benchmark::State& state) { run(state, pose(0, 20, 10, 5), pose(0, 20.4, 10.3, 5)); }

void BM_rotating_sweep(benchmark::State& state) { run(state, pose(0, 20, 10, 5), pose(3 * M_PI / 180, 20.4, 10.3, 5)); }

}  // namespace

BENCHMARK(BM_linear_sweep)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_rotating_sweep)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
