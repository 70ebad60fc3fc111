#include "host/mill_app.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "host/interrupt_flag.h"
#include "host/mesh_volume.h"
#include "host/mill_args.h"
#include "host/run_defaults.h"
#include "host/run_report.h"
#include "host/sample_program.h"
#include "host/stl_writer.h"
#include "host/stock_session.h"
#include "host/tool_set.h"
#include "host/whole_file.h"
#include "interp/ngc_interpreter.h"
#include "interp/program_reader.h"
#include "interp/source_error_t.h"
#include "interp/tool_desc_parse.h"

namespace mill {

namespace {

namespace fs = std::filesystem;

// A run after its options are settled: what to cut, with what, and where
// the files go.
struct run_plan_t {
  mill_options_t options;
  tooling_t tooling;
  tool_table_t table;
  program_t program;
  stock_spec_t stock;
  fs::path out_dir;
  std::vector<std::string> notes;
};

// The sample brings its own block and tool unless the user gives others.
void apply_sample_defaults(mill_options_t& o, std::vector<std::string>& notes) {
  notes.push_back("the built-in sample: a contour, a pocket and a 3D finish on a 100 x 100 x 30 mm block");
  if (o.stock.kind == stock_kind::feed_box) {
    o.stock.kind = stock_kind::box;
    o.stock.box = sample_stock_box;
  }
  if (!o.tool) o.tool = flat_tool(sample_tool_diameter);
  if (!o.cell) o.cell = 0.2;
  if (o.out_dir.empty()) o.out_dir = "quvra-mill-sample";
}

run_plan_t plan_run(mill_options_t options) {
  run_plan_t p;
  const bool sample = options.program.empty();
  if (sample) apply_sample_defaults(options, p.notes);
  p.tooling = choose_tooling(options, p.notes);
  if (!options.tool_table.empty()) p.table = read_tool_table(options.tool_table);
  interp_options_t io;
  // Chords a quarter of a cell from the arc are below what the cells show.
  io.chord_tolerance = p.tooling.cell / 4;
  if (!options.tool_table.empty()) io.tools = &p.table;
  p.program = sample ? run_ngc(sample_program_text(), "sample.ngc", io) : read_program(options.program, io);
  p.stock = choose_stock(options, p.program, p.tooling.tool.d, p.notes);
  p.out_dir = options.out_dir.empty() ? fs::path("quvra-mill-out") / fs::path(options.program).stem()
                                      : fs::path(options.out_dir);
  p.options = std::move(options);
  return p;
}

void write_text(const fs::path& path, const std::string& text) {
  write_whole_file(path, [&](const std::string& temp) {
    std::ofstream f(temp);
    if (!(f << text) || !f.flush()) throw std::runtime_error("cannot write " + path.string());
  });
}

void write_outputs(const run_plan_t& p, const stock_session_t& stock, const loop_result_t& loop,
                   const run_summary_t& summary, const std::vector<double>& surface) {
  write_whole_file(p.out_dir / "stock.stl",
                   [&](const std::string& temp) { write_binary_stl(temp, surface, "quvra-mill cut stock"); });
  write_whole_file(p.out_dir / "stock.cbt", [&](const std::string& temp) { stock.write(temp); });
  write_whole_file(p.out_dir / "moves.csv", [&](const std::string& temp) {
    std::ofstream csv(temp);
    write_moves_csv(csv, loop.records, p.program.files);
    if (!csv.flush()) throw std::runtime_error("cannot write " + (p.out_dir / "moves.csv").string());
  });
  write_text(p.out_dir / "summary.txt", summary_text(summary));
  if (p.options.program.empty()) write_text(p.out_dir / "sample.ngc", sample_program_text());
}

// Runs under an interrupt_guard_t from before the stock is built until the
// files are written, so that a first Ctrl-C at any time stops the cut at the
// next move boundary and still writes whole files.
run_summary_t cut_and_write(const run_plan_t& p, std::ostream& out, std::ostream& err, bool terminal) {
  require_writable_dir(p.out_dir);
  out << "building the stock...\n" << std::flush;
  stock_session_t stock(p.stock, p.tooling.cell);
  if (stock.open_edges() > 0)
    out << "note: " << p.stock.stl_path << " is not a closed surface (" << stock.open_edges()
        << " edges without a twin); built from it as --open-stock asks\n";
  const double before = enclosed_volume(stock.surface());
  tool_set_t tools(p.program, p.table, p.tooling);
  const move_cutter_t cutter = [&](const move_t& m, const pose_t& start, const pose_t& end) {
    return stock.cut(*tools.model(m.tool).sweep(start, end));
  };
  progress_view_t progress(err, terminal, p.program.moves.size());
  const loop_result_t loop = run_moves(p.program.moves, cutter, interrupt_requested, progress);
  const std::vector<double> surface = stock.surface();
  const run_summary_t summary =
      summarize(loop, p.program.moves.size(), before - enclosed_volume(surface), stock.grid_width());
  write_outputs(p, stock, loop, summary, surface);
  return summary;
}

}  // namespace

int run_mill(const std::vector<std::string>& args, std::ostream& out, std::ostream& err, bool terminal) {
  run_plan_t plan;
  try {
    const mill_options_t options = parse_mill_args(args);
    if (options.help) {
      out << usage_text();
      return mill_ok;
    }
    plan = plan_run(options);
  } catch (const source_error_t& e) {
    err << e.what() << '\n';
    return mill_program_error;
  } catch (const std::invalid_argument& e) {
    err << "quvra-mill: " << e.what() << "\n(quvra-mill --help lists the options)\n";
    return mill_usage_error;
  }
  for (const std::string& note : plan.notes) out << note << '\n';
  out << "program: " << plan.program.files.front() << ", " << plan.program.moves.size() << " moves\n";
  try {
    const interrupt_guard_t guard;
    const run_summary_t summary = cut_and_write(plan, out, err, terminal);
    out << summary_text(summary) << "files written to " << fs::absolute(plan.out_dir).string() << '\n';
    if (interrupt_requested() && !summary.interrupted) out << "Ctrl-C came after the last move; the files are whole\n";
    return interrupt_requested() ? mill_interrupted : mill_ok;
  } catch (const std::exception& e) {
    err << "quvra-mill: " << e.what() << '\n';
    return mill_failed;
  }
}

}  // namespace mill
