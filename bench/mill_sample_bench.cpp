// The quvra-mill host cutting its built-in sample (a contour, a two-level
// pocket and a 3D finishing raster on a 100 x 100 x 30 mm block with a 6 mm
// flat end mill) at 0.2 mm and 0.1 mm cells, each move swept and subtracted
// as the host does it. Prints moves per second ("moves" rate).
//
// The whole sample (some 3,200 moves) takes several minutes at 0.1 mm, too
// long for a benchmark run, so only its first 600 moves are cut: the
// contour, the pocket and the first rows of the finish, all three kinds of
// work.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <sstream>

#include "host/mill_loop.h"
#include "host/run_defaults.h"
#include "host/sample_program.h"
#include "host/stock_session.h"
#include "host/tool_set.h"
#include "interp/ngc_interpreter.h"
#include "interp/tool_desc_parse.h"

namespace {

constexpr std::size_t prefix_moves = 600;

void BM_mill_sample(benchmark::State& state) {
  mill::tooling_t tooling;
  tooling.cell = static_cast<double>(state.range(0)) / 1000;
  tooling.tool = mill::flat_tool(mill::sample_tool_diameter);
  tooling.tool_length = 40;
  mill::interp_options_t io;
  // As the host plays it: arc chords a quarter of a cell from the arc.
  io.chord_tolerance = tooling.cell / 4;
  const mill::program_t program = mill::run_ngc(mill::sample_program_text(), "sample.ngc", io);
  const std::vector<mill::move_t> moves(program.moves.begin(),
                                        program.moves.begin() + std::min(prefix_moves, program.moves.size()));
  mill::stock_spec_t spec;
  spec.kind = mill::stock_kind::box;
  spec.box = mill::sample_stock_box;
  const mill::tool_table_t no_table;
  std::size_t cut = 0;
  for (auto _ : state) {
    state.PauseTiming();
    mill::stock_session_t stock(spec, tooling.cell);
    mill::tool_set_t tools(program, no_table, tooling);
    std::ostringstream quiet;
    mill::progress_view_t progress(quiet, false, moves.size());
    state.ResumeTiming();
    const mill::loop_result_t loop = mill::run_moves(
        moves,
        [&](const mill::move_t& m, const mill::pose_t& start, const mill::pose_t& end) {
          return stock.cut(*tools.model(m.tool).sweep(start, end));
        },
        [] { return false; }, progress);
    cut += loop.records.size();
  }
  state.counters["moves"] = benchmark::Counter(static_cast<double>(cut), benchmark::Counter::kIsRate);
}

BENCHMARK(BM_mill_sample)->Arg(200)->Arg(100)->Unit(benchmark::kSecond)->Iterations(1);

}  // namespace

BENCHMARK_MAIN();
