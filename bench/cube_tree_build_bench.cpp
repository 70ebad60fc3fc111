// Building a stock from a 200,000-triangle sphere of 50 mm diameter at
// 0.1 mm cells. Prints the build time, the leaf count and the bytes the tree
// holds per leaf (resident growth while the tree lives, over its leaves).

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>

#include <fstream>

#include "cbtr/build/build_cube_tree.h"
#include "soups.h"

namespace {

double resident_bytes() {
  long pages = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> pages >> resident;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

std::size_t count_leaves(const cbtr::cube_node_t& node) {
  if (node.kind & cbtr::kind_leaf) return 1;
  std::size_t n = 0;
  for (const auto& child : cbtr::snapshot_children(node))
    if (child) n += count_leaves(*child);
  return n;
}

void BM_build_sphere_stock(benchmark::State& state) {
  geom::stl3d_t soup;
  soup.tris = quvra_test::sphere_soup(25.0, 316, 316);  // about 200,000 triangles
  std::size_t leaves = 0;
  double bytes = 0;
  for (auto _ : state) {
    state.PauseTiming();
    const double before = resident_bytes();
    state.ResumeTiming();
    auto tree = cbtr::build_cube_tree(soup, 0.1, nullptr, nullptr);
    state.PauseTiming();
    leaves = count_leaves(*tree->root.load());
    // What the build freed goes back to the system first, so that only the
    // tree itself is counted.
    malloc_trim(0);
    bytes = resident_bytes() - before;
    tree.reset();
    state.ResumeTiming();
  }
  state.counters["triangles"] = static_cast<double>(soup.tris.size());
  state.counters["leaves"] = static_cast<double>(leaves);
  state.counters["bytes_per_leaf"] = bytes / static_cast<double>(leaves);
}

BENCHMARK(BM_build_sphere_stock)->Unit(benchmark::kSecond)->Iterations(1);

}  // namespace

BENCHMARK_MAIN();
