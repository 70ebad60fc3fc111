#include "host/mill_app.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "host/stock_session.h"

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

TEST(MillApp, WithoutCuttingTheHostSaysSoAndWritesNothing) {
  if (cutting_available()) GTEST_SKIP() << "this build can cut";
  const run_t r = run({"--out", "sample_out"});
  EXPECT_EQ(r.status, mill_failed);
  EXPECT_EQ(r.err, "quvra-mill: cutting is not available in this build\n");
  EXPECT_FALSE(std::ifstream("sample_out/moves.csv").good());
}

}  // namespace
}  // namespace mill
