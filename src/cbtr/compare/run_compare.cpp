#include "cbtr/compare/run_compare.h"

#include <algorithm>
#include <atomic>
#include <future>
#include <semaphore>
#include <thread>
#include <vector>

#include "cbtr/collision/tri_tree_t.h"
#include "cbtr/compare/design_t.h"
#include "cbtr/compare/distance_probe_t.h"
#include "cbtr/compare/refine_surface.h"
#include "cbtr/model/tree_walk.h"

namespace cbtr {

namespace {

// Tasks start at this many levels above the stock's finest cells: a
// subtree of up to 32^3 cells, so that a stock a few hundred cells across
// still splits into many more tasks than there are threads.
constexpr int task_levels = 5;
// The count of cells done is passed on once per block.
constexpr std::int64_t progress_block = 4096;
// A node of the search tree with this many triangles or fewer stops
// splitting: a few exact tests cost less than more nodes.
constexpr std::size_t few_triangles = 8;

struct shared_t {
  const design_t& design;
  const tri_tree_t& search;
  const compare_request_t& request;
  int async_level;
  std::counting_semaphore<65536> semaphore;
  std::vector<std::future<void>> futures;
  std::atomic<std::int64_t> done{0};
};

// Waits for every task, also when the walk that starts them fails midway:
// the tasks refer to what the walk's frame holds.
struct task_joiner_t {
  std::vector<std::future<void>>& futures;
  ~task_joiner_t() {
    for (auto& f : futures)
      if (f.valid()) f.wait();
  }
};

void measure(std::shared_ptr<cube_node_t> leaf, shared_t& s, distance_probe_t& probe) {
  const double d = probe.distance(*leaf);
  const std::int64_t n = s.done.fetch_add(1) + 1;
  s.request.fn(leaf, d, s.request.ctx);
  if (s.request.monitor && n % progress_block == 0) s.request.monitor->set_numerator(n);
}

void walk(const std::shared_ptr<cube_node_t>& node, int level, shared_t& s, distance_probe_t& probe);

void start_task(std::shared_ptr<cube_node_t> child, int level, shared_t& s) {
  s.semaphore.acquire();
  try {
    s.futures.push_back(std::async(std::launch::async, [child = std::move(child), level, &s] {
      struct release_t {
        shared_t& s;
        ~release_t() { s.semaphore.release(); }
      } release{s};
      distance_probe_t probe(s.design, s.search, s.request.max_distance, s.request.resolution);
      walk(child, level, s, probe);
    }));
  } catch (...) {
    s.semaphore.release();
    throw;
  }
}

void walk(const std::shared_ptr<cube_node_t>& node, int level, shared_t& s, distance_probe_t& probe) {
  if (node->kind & kind_leaf) return measure(node, s, probe);
  for (std::shared_ptr<cube_node_t>& child : snapshot_children(*node)) {
    if (!child) continue;
    if (level == s.async_level)
      start_task(std::move(child), level + 1, s);
    else
      walk(child, level + 1, s, probe);
  }
}

std::int64_t count_leaves(const cube_tree_t& tree) {
  std::int64_t n = 0;
  for_each_leaf(tree, [&n](const cube_node_t&) { ++n; });
  return n;
}

void say(common::progress_monitor_t* monitor, const char* text) {
  if (monitor) monitor->set_msg(text, 0);
}

}  // namespace

unsigned compare_workers() { return std::max(1u, std::thread::hardware_concurrency()); }

void run_compare(cube_tree_t& tree, const geom::stl3d_t& design_soup, const compare_request_t& request) {
  common::progress_monitor_t* monitor = request.monitor;
  say(monitor, "build triangles.");
  const design_t design(design_soup);
  say(monitor, "build searching-tree.");
  const int resolution = static_cast<int>(tree.resolution);
  const tri_tree_t search(design.soup, {0, few_triangles + 1, std::max(resolution, 1)});
  say(monitor, "mesh");
  refine_surface(tree);
  const std::shared_ptr<cube_node_t> root = tree.root.load();
  shared_t s{design, search, request, std::max(0, resolution - task_levels),
             std::counting_semaphore<65536>(static_cast<std::ptrdiff_t>(std::min(request.workers, 65535u))), {}};
  s.futures.reserve(1024);
  const std::int64_t total = count_leaves(tree);
  if (monitor && monitor->denominator != total) monitor->set_msg("geom compare", total);
  if (root) {
    task_joiner_t joiner{s.futures};
    distance_probe_t probe(design, search, request.max_distance, request.resolution);
    walk(root, 0, s, probe);
    for (auto& f : s.futures) f.get();
  }
  if (monitor) monitor->set_numerator(total);
}

}  // namespace cbtr
