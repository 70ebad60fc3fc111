// Milling physics speed. Prints two rates:
//   "steps":       force steps per second of a 10 mm 4-flute end mill with a
//                  30 degree helix at 360 angle samples, in a full slot 6 mm
//                  deep, as 24 side slices of 0.25 mm;
//   "engagements": engagements per second built from the contours of a real
//                  step: the same tool fed 0.4 mm along a slot in a block at
//                  0.25 mm cells, with the path behind it cut first.

#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>
#include <vector>

#include "mill_scene.h"
#include "milling/engagement_t.h"
#include "milling/milling_contours.h"
#include "milling/milling_engagement.h"
#include "milling/milling_physics.h"

namespace {

constexpr double pi = std::numbers::pi;
constexpr double radius = 5;
constexpr int flutes = 4;

milling_physics_session_t* helix_end_mill() {
  const double lag_per_mm = std::tan(pi / 6) / radius;
  std::vector<int> side_counts(flutes, 41), bottom_counts(flutes, -1);
  std::vector<double> side, z_ranges;
  for (int j = 0; j < flutes; ++j) {
    for (int i = 0; i <= 40; ++i) {
      const double z = 0.5 * i;
      side.insert(side.end(), {radius, j * 2 * pi / flutes + z * lag_per_mm, z, 0.1});
    }
    z_ranges.insert(z_ranges.end(), {0, 20});
  }
  const double coeffs[6] = {222, 168.8, -767, 0.7, 26.6, -27.7};
  return milling_physics_session__new(0, 0.01, 1, 0, flutes, side_counts.data(), side.data(), z_ranges.data(),
                                      bottom_counts.data(), nullptr, 2, nullptr, 0, coeffs, 6);
}

void BM_force_step(benchmark::State& state) {
  milling_physics_session_t* session = helix_end_mill();
  mech::engagement_t slot;
  for (double z = 0.125; z < 6; z += 0.25) slot.side.push_back({z, 0.25, {{-pi / 2, pi / 2}}});
  milling_force_input_t in{};
  for (double* m : {in.pose_prev, in.pose_cur}) m[0] = m[5] = m[10] = m[15] = 1;
  in.pose_cur[12] = 0.1;
  in.dt = 0.001;
  in.feed = 100;
  in.omega = 1000;
  in.max_z = 20;
  in.samples = static_cast<int32_t>(state.range(0));
  std::vector<double> cut(3 * in.samples), edge(3 * in.samples), moments(3 * in.samples), out(11);
  std::size_t steps = 0;
  for (auto _ : state) {
    milling_physics__run_force_step(session, &slot, &in, cut.data(), edge.data(), moments.data(), out.data());
    benchmark::DoNotOptimize(out.data());
    ++steps;
  }
  state.counters["steps"] = benchmark::Counter(static_cast<double>(steps), benchmark::Counter::kIsRate);
  milling_physics_session__delete(session);
}

void BM_engagement_from_contours(benchmark::State& state) {
  const quvra_test::end_mill_t tool{radius, 10.0};
  const std::array<double, 3> from{-2.0, 0, 4.0}, to{-1.6, 0, 4.0};
  quvra_test::mill_scene_t scene({-20, -15, 0, 20, 15, 10}, 0.25);
  scene.cut_path_to(tool, from);
  substraction_t* step = scene.cut_tool_at(tool, to);
  const auto to_tool = quvra_test::stock_to_tool(to);
  milling_contours_t* contours = milling_contours__new_by_substraction(step, to_tool.data(), nullptr);
  std::vector<double> levels, steps;
  for (double z = 0.125; z < 10; z += 0.25) levels.push_back(z), steps.push_back(0.25);
  const auto prev = quvra_test::tool_pose(from), cur = quvra_test::tool_pose(to);
  std::size_t built = 0;
  for (auto _ : state) {
    milling_engagement_t* e =
        milling_engagement__new_by_contours(contours, 0, levels.data(), steps.data(), static_cast<int>(levels.size()),
                                            prev.data(), cur.data(), radius, 0.25, 1);
    benchmark::DoNotOptimize(e);
    milling_engagement__delete(e);
    ++built;
  }
  state.counters["engagements"] = benchmark::Counter(static_cast<double>(built), benchmark::Counter::kIsRate);
  state.counters["contour_bytes"] = substraction__GetContactContoursBufSize(step);
  milling_contours__delete(contours);
  substraction__dtor(step);
}

BENCHMARK(BM_force_step)->Arg(360)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_engagement_from_contours)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
