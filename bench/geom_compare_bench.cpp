// The compare of a stock of about a million surface cells (a 100 mm cube at
// 0.25 mm cells) with a design of about 200,000 triangles (a sphere of
// radius 60 mm about the cube's centre, so that every cell is measured), in
// one task at a time and in two. Prints the best and the range of repeated
// runs for each, and the speed-up of the best two-task run over the best
// one-task run. The processor time of each best run is printed beside it: on
// a shared machine the wall time also holds the waits for other work.

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <vector>

#include "cbtr/compare/run_compare.h"
#include "cbtr/cube_tree.h"
#include "cbtr/model/cube_tree_t.h"
#include "geom/stl3d.h"
#include "soups.h"

namespace {

constexpr int runs = 3;

std::atomic<long> measured{0};

void count_cell(std::shared_ptr<cbtr::cube_node_t>&, double distance, void*) {
  if (distance == distance) measured.fetch_add(1, std::memory_order_relaxed);
}

struct times_t {
  std::vector<double> s;
  std::vector<double> cpu;
  double best_cpu() const { return cpu[std::min_element(s.begin(), s.end()) - s.begin()]; }
  double best() const { return *std::min_element(s.begin(), s.end()); }
  double worst() const { return *std::max_element(s.begin(), s.end()); }
};

times_t time_compare(cube_tree_t& stock, const geom::stl3d_t& design, unsigned workers) {
  times_t t;
  for (int i = 0; i < runs; ++i) {
    measured = 0;
    const auto start = std::chrono::steady_clock::now();
    const std::clock_t cpu_start = std::clock();
    cbtr::run_compare(stock, design, {30.0, 0.001, count_cell, nullptr, nullptr, workers});
    t.cpu.push_back(static_cast<double>(std::clock() - cpu_start) / CLOCKS_PER_SEC);
    t.s.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
  return t;
}

}  // namespace

int main() {
  const auto block = quvra_test::box_soup(-50, -50, -50, 50, 50, 50);
  stl3d_t* block_soup = stl3d__new_by_copy_array(reinterpret_cast<const double*>(block.data()), block.size());
  cube_tree_t* stock = cube_tree__new(block_soup, 0.25, nullptr, nullptr);
  const auto sphere = quvra_test::sphere_soup(60, 250, 400);
  const geom::stl3d_t design(reinterpret_cast<const double*>(sphere.data()), sphere.size());
  // The first compare splits nothing on this stock, whose cells are all at
  // its resolution already; it is timed with the rest.
  const times_t one = time_compare(*stock, design, 1);
  const long cells = measured;
  const times_t two = time_compare(*stock, design, 2);
  std::printf("design triangles: %zu, cells measured: %ld\n", design.tris.size(), cells);
  std::printf("1 task:  best %.3f s (processor %.3f s), range %.3f - %.3f s over %d runs\n", one.best(),
              one.best_cpu(), one.best(), one.worst(), runs);
  std::printf("2 tasks: best %.3f s (processor %.3f s), range %.3f - %.3f s over %d runs\n", two.best(),
              two.best_cpu(), two.best(), two.worst(), runs);
  std::printf("speed-up (best over best): %.2f\n", one.best() / two.best());
  cube_tree__delete(stock);
  stl3d__delete(block_soup);
  return 0;
}
