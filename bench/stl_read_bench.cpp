// Reading a 1,000,000-facet STL file in both forms from the page cache.
// Prints the throughput as the counter "MB" per second: the binary reader should be
// bounded by copying, not by stream calls.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>

#include "geom/stl3d_t.h"
#include "soups.h"
#include "stl_files.h"

namespace {

namespace fs = std::filesystem;

// About a million facets: a sphere of 500 rings by 1001 sectors.
struct bench_files_t {
  fs::path dir = fs::temp_directory_path() / ("quvra_stl_bench_" + std::to_string(getpid()));
  std::string binary = (dir / "sphere_bin.stl").string();
  std::string text = (dir / "sphere_txt.stl").string();
  std::size_t facets = 0;

  bench_files_t() {
    fs::create_directories(dir);
    const auto sphere = quvra_test::sphere_soup(25.0, 500, 1001);
    facets = sphere.size();
    quvra_test::write_binary_stl(binary, sphere);
    quvra_test::write_text_stl(text, sphere);
  }
  ~bench_files_t() { fs::remove_all(dir); }
};

const bench_files_t& files() {
  static const bench_files_t f;
  return f;
}

void read_file(benchmark::State& state, const std::string& path) {
  const auto bytes = static_cast<double>(fs::file_size(path));
  std::size_t facets = 0;
  for (auto _ : state) {
    geom::stl3d_t mesh;
    if (mesh.read_file(path) != geom::stl_status::ok) state.SkipWithError("read failed");
    facets = mesh.tris.size();
    benchmark::DoNotOptimize(mesh.tris.data());
  }
  state.counters["facets"] = static_cast<double>(facets);
  state.counters["MB"] = benchmark::Counter(bytes / 1e6, benchmark::Counter::kIsIterationInvariantRate);
}

void BM_read_binary_stl(benchmark::State& state) { read_file(state, files().binary); }
void BM_read_text_stl(benchmark::State& state) { read_file(state, files().text); }

BENCHMARK(BM_read_binary_stl)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_read_text_stl)->Unit(benchmark::kMillisecond)->MinTime(2.0);

}  // namespace

BENCHMARK_MAIN();
