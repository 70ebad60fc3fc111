// The whole host refuses unusable input before it cuts, with a message that
// names what is wrong.

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "case_files.h"
#include "host/mill_app.h"

namespace mill::test {
namespace {

struct run_t {
  int status = -1;
  std::string out;
  std::string err;
};

run_t run(const std::vector<std::string>& args) {
  std::ostringstream out;
  std::ostringstream err;
  const int status = run_mill(args, out, err, false);
  return {status, out.str(), err.str()};
}

TEST(MillRefusals, AnUnwritableOutputFolderIsFoundBeforeTheCut) {
  // It was once found only when the cut stock was to be written.
  const run_t r = run({case_path("operator_before_function.ngc"), "--stock", "box:0,0,0,2,2,2", "--out", "/proc"});
  EXPECT_EQ(r.status, mill_failed);
  EXPECT_NE(r.err.find("cannot write in the output folder /proc"), std::string::npos) << r.err;
  EXPECT_EQ(r.out.find("building the stock"), std::string::npos) << r.out;
}

TEST(MillRefusals, ADirectoryIsNoProgram) {
  // It once ran as an empty program and was reported as having no feed moves.
  const run_t r = run({case_path(""), "--out", "mill_refusals_out"});
  EXPECT_EQ(r.status, mill_program_error);
  EXPECT_NE(r.err.find("is a directory, not a file"), std::string::npos) << r.err;
}

}  // namespace
}  // namespace mill::test
