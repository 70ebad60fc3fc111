// One frame of a stock of about 1,000,000 triangles (a ball of 10.2 mm
// diameter at 0.05 mm cells: flat faces would take few cells) at 1280 x 800 on whatever GL the EGL surfaceless
// context gives (Mesa's llvmpipe where there is no GPU), with the default
// drawing cache cap. Frames are timed to glFinish. Prints the frame time,
// the drawing cache's bytes and the depth the view chose; "cold" frames
// first build every cell drawing, "warm" ones find them cached.

#include <benchmark/benchmark.h>

#include <memory>

#include "cbtr/cache/cell_caches.h"
#include "cbtr/cache/cell_triangles.h"
#include "cbtr/cache/draw_tree.h"
#include "cbtr/cbtr_cache.h"
#include "cbtr/cube_tree.h"
#include "disp/disp_torch.h"
#include "disp/egl_display_t.h"
#include "disp/font_state.h"
#include "disp/init_disp.h"
#include "disp/pose_math.h"
#include "geom/stl3d.h"
#include "pick_target.h"
#include "soups.h"

namespace {

constexpr int width = 1280, height = 800;
constexpr double radius = 5.1;

struct scene_t {
  scene_t() {
    const std::vector<geom::stl_tri_t> ball = quvra_test::sphere_soup(radius, 200, 200);
    stl3d_t* soup = stl3d__new_by_copy_array(reinterpret_cast<const double*>(ball.data()), ball.size());
    tree = cube_tree__new(soup, 0.05, nullptr, nullptr);
    stl3d__delete(soup);
    triangles = cbtr::list_surface(*tree).size();
    cbtr__set_rendering_cap(262144000);
  }
  ~scene_t() { cube_tree__delete(tree); }

  // Looking at the ball from a diagonal, all of it in view.
  std::unique_ptr<disp::bind> view() const {
    const geom::mat4d turn = {
        {0.7071, -0.4082, 0.5774, 0, 0.7071, 0.4082, -0.5774, 0, 0, 0.8165, 0.5774, 0, 0, 0, 0, 1}};
    const geom::mat4d view = turn;
    const geom::mat4d scale = disp::uniform_scale(1.0 / (1.1 * radius));
    const geom::mat4d aspect = {{static_cast<double>(height) / width, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    return std::make_unique<disp::bind>(geom::mat4d::identity(), view, scale, aspect, 0, width, height);
  }

  int frame(test_support::pick_target_t& target) const {
    target.clear();
    const auto b = view();
    const int depth = cbtr::draw_tree(*tree, *b);
    glFinish();
    return depth;
  }

  cube_tree_t* tree = nullptr;
  std::size_t triangles = 0;
};

const scene_t& scene() {
  static const scene_t s;
  return s;
}

void report(benchmark::State& state, int depth) {
  state.counters["triangles"] = static_cast<double>(scene().triangles);
  state.counters["cache_bytes"] = static_cast<double>(cbtr::drawing_cache().used_bytes());
  state.counters["depth"] = depth;
}

void BM_stock_frame_cold(benchmark::State& state) {
  const disp::disp_torch torch;
  test_support::pick_target_t target(width, height);
  int depth = 0;
  for (int i = 0; i < 10; ++i) scene().frame(target);  // the depth settles
  for (auto _ : state) {
    state.PauseTiming();
    cube_tree__free_disp_cache(scene().tree);
    cbtr__clear_drawing_cache_buf();
    state.ResumeTiming();
    depth = scene().frame(target);
  }
  report(state, depth);
}

void BM_stock_frame_warm(benchmark::State& state) {
  const disp::disp_torch torch;
  test_support::pick_target_t target(width, height);
  int depth = 0;
  for (int i = 0; i < 10; ++i) scene().frame(target);
  for (auto _ : state) depth = scene().frame(target);
  report(state, depth);
}

BENCHMARK(BM_stock_frame_cold)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_stock_frame_warm)->Unit(benchmark::kMillisecond)->Iterations(20);

}  // namespace

int main(int argc, char** argv) {
  if (const std::string why = disp::egl_unavailable_reason(); !why.empty()) {
    std::fprintf(stderr, "no GL context: %s\n", why.c_str());
    return 1;
  }
  disp::set_font_file(QUVRA_BENCH_FONT);
  double depth_max = 0;
  disp::init_disp(&depth_max);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
