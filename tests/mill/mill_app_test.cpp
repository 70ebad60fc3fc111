#include "host/mill_app.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <sstream>

#include "host/tool_set.h"

namespace mill {
namespace {

struct run_t {
  int status;
  std::string out, err;
};

run_t run(const std::vector<std::string>& args) {
  std::ostringstream out, err;
  const int status = run_mill(args, out, err, false);
  return {status, out.str(), err.str()};
}

void write_file(const std::string& path, const std::string& text) { std::ofstream(path) << text; }

TEST(MillApp, HelpListsTheOptions) {
  const run_t r = run({"--help"});
  EXPECT_EQ(r.status, mill_ok);
  EXPECT_NE(r.out.find("--tool-table FILE"), std::string::npos);
}

TEST(MillApp, ABadCommandLineIsAUsageError) {
  const run_t r = run({"--cell", "0"});
  EXPECT_EQ(r.status, mill_usage_error);
  EXPECT_EQ(r.err, "quvra-mill: --cell must be positive, not 0\n(quvra-mill --help lists the options)\n");
}

TEST(MillApp, ABadProgramReportsFileLineAndWord) {
  write_file("bad.ngc", "G21 G90\nG1 X10 F500\nG41 X20\n");
  const run_t r = run({"bad.ngc"});
  EXPECT_EQ(r.status, mill_program_error);
  EXPECT_EQ(r.err.rfind("bad.ngc:3: ", 0), 0u) << r.err;
  EXPECT_NE(r.err.find("'G41'"), std::string::npos) << r.err;
}

TEST(MillApp, AMissingToolTableIsNamed) {
  write_file("ok.ngc", "G1 X10 F500\n");
  const run_t r = run({"ok.ngc", "--tool-table", "no_such_tools.txt"});
  EXPECT_EQ(r.status, mill_program_error);
  EXPECT_NE(r.err.find("no_such_tools.txt"), std::string::npos) << r.err;
}

TEST(MillApp, ABareProgramSaysWhichDefaultsItTook) {
  write_file("bare.ngc", "G0 X0 Y0 Z5\nG1 Z-3 F300\nG1 X40 Y20\nG0 Z50\n");
  const run_t r = run({"bare.ngc", "--out", "bare_out"});
  EXPECT_NE(r.out.find("stock: box:0,0,-3,40,20,5,"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("6 mm flat end mill"), std::string::npos);
  EXPECT_NE(r.out.find("cell: 0.2 mm"), std::string::npos);
  EXPECT_NE(r.out.find("program: bare.ngc, 4 moves"), std::string::npos) << r.out;
}

// The number after "name: " in a summary.
double summary_value(const std::string& text, const std::string& name) {
  const std::size_t at = text.find(name + ": ");
  if (at == std::string::npos) {
    ADD_FAILURE() << "no '" << name << "' in\n" << text;
    return std::nan("");
  }
  return std::stod(text.substr(at + name.size() + 2));
}

std::string file_text(const std::string& path) {
  std::ifstream f(path);
  std::ostringstream s;
  s << f.rdbuf();
  return s.str();
}

// The row of a moves table that starts with prefix, without its newline.
std::string csv_row(const std::string& csv, const std::string& prefix) {
  const std::size_t at = csv.find("\n" + prefix);
  if (at == std::string::npos) return {};
  return csv.substr(at + 1, csv.find('\n', at + 1) - at - 1);
}

// A 6 mm flat end mill plunges 3 mm into a box and feeds 20 mm along x: it
// removes a stadium (a 20 x 6 rectangle and two half discs) 3 mm deep. The
// tool is a polygon within facet_per_cell of a cell inside its circle, which
// can only remove less, by at most the stadium's perimeter times that; and
// every point of the slot's faces may be off by a cell either way.
TEST(MillApp, AStraightSlotRemovesItsSweptVolume) {
  write_file("slot.ngc", "G21 G90\nG0 X10 Y10 Z15\nG1 Z7 F300\nG1 X30\nG0 Z15\n");
  const double cell = 0.1;
  const run_t r =
      run({"slot.ngc", "--stock", "box:0,0,0,40,20,10", "--tool", "flat:6", "--cell", "0.1", "--out", "slot_out"});
  ASSERT_EQ(r.status, mill_ok) << r.err;
  const std::string summary = file_text("slot_out/summary.txt");
  EXPECT_NE(r.out.find(summary), std::string::npos) << "the screen shows the summary file";
  EXPECT_EQ(summary_value(summary, "moves"), 4);
  const double grid = summary_value(summary, "cell width");
  EXPECT_LE(grid, cell);

  const double pi = std::numbers::pi, depth = 3, length = 20, radius = 3;
  const double exact = (2 * radius * length + pi * radius * radius) * depth;
  const double perimeter = 2 * length + 2 * pi * radius;
  const double faces = (2 * radius * length + pi * radius * radius) + perimeter * depth;
  const double facets = perimeter * depth * cell * facet_per_cell;
  const double removed = summary_value(summary, "removed volume");
  EXPECT_GE(removed, exact - facets - faces * grid);
  EXPECT_LE(removed, exact + faces * grid);

  const std::string csv = file_text("slot_out/moves.csv");
  EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 5) << csv;
  EXPECT_EQ(csv_row(csv, "slot.ngc,2,"), "slot.ngc,2,rapid,0,0,0") << "above the stock";
  const std::string plunge = csv_row(csv, "slot.ngc,3,"), feed = csv_row(csv, "slot.ngc,4,");
  EXPECT_EQ(plunge.rfind("slot.ngc,3,feed,8,", 0), 0u) << plunge;
  EXPECT_EQ(plunge.back(), '1') << plunge;
  EXPECT_EQ(feed.rfind("slot.ngc,4,feed,20,", 0), 0u) << feed;
  EXPECT_EQ(feed.back(), '1') << feed;
  // A binary STL of n triangles is 84 + 50 n bytes; the stock has many.
  const auto stl_size = std::filesystem::file_size("slot_out/stock.stl");
  EXPECT_GT(stl_size, 84u + 50u * 12u);
  EXPECT_EQ((stl_size - 84) % 50, 0u);
  EXPECT_GT(std::filesystem::file_size("slot_out/stock.cbt"), 0u);
}

}  // namespace
}  // namespace mill
