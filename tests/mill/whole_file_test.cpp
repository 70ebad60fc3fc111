// Output files are whole or absent, whatever stops their writing: an error,
// or a second Ctrl-C that ends the process in the middle of one.

#include "host/whole_file.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "host/interrupt_flag.h"

namespace mill {
namespace {

namespace fs = std::filesystem;

std::string contents(const fs::path& path) {
  std::ifstream in(path);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

void put(const std::string& path, const std::string& text) { std::ofstream(path) << text; }

class WholeFile : public ::testing::Test {
 protected:
  void SetUp() override {
    fs::remove_all(dir_);
    fs::create_directories(dir_);
  }
  void TearDown() override { fs::remove_all(dir_); }
  // ctest runs each case in its own process, side by side: one folder each.
  const fs::path dir_ = fs::path("whole_file_test") / ::testing::UnitTest::GetInstance()->current_test_info()->name();
  const fs::path file_ = dir_ / "stock.stl";
};

TEST_F(WholeFile, AppearsOnlyOnceComplete) {
  write_whole_file(file_, [&](const std::string& temp) {
    put(temp, "half");
    EXPECT_FALSE(fs::exists(file_)) << "the name is taken before the file is whole";
    put(temp, "whole");
  });
  EXPECT_EQ(contents(file_), "whole");
  EXPECT_EQ(std::distance(fs::directory_iterator(dir_), fs::directory_iterator()), 1) << "a temporary file is left";
}

TEST_F(WholeFile, AFailedWriteKeepsTheOldFileAndLeavesNoTemporary) {
  put(file_.string(), "old");
  EXPECT_THROW(write_whole_file(file_,
                                [](const std::string& temp) {
                                  put(temp, "cut o");
                                  throw std::runtime_error("disk full");
                                }),
               std::runtime_error);
  EXPECT_EQ(contents(file_), "old");
  EXPECT_EQ(std::distance(fs::directory_iterator(dir_), fs::directory_iterator()), 1);
}

TEST_F(WholeFile, ASecondCtrlCWhileWritingLeavesNoCutOffFile) {
  // The second Ctrl-C once left a stock.stl whose header counted facets that
  // were never written.
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        const interrupt_guard_t guard;
        std::raise(SIGINT);  // the first only asks the run to stop
        write_whole_file(file_, [](const std::string& temp) {
          put(temp, "header counting 1000 facets");
          std::raise(SIGINT);
        });
      },
      ::testing::KilledBySignal(SIGINT), "");
  EXPECT_TRUE(fs::is_empty(dir_)) << "neither the file nor its temporary may remain";
}

TEST_F(WholeFile, AnUnwritableOutputFolderIsFoundBeforeTheCut) {
  require_writable_dir(dir_ / "new" / "folder");
  EXPECT_TRUE(fs::is_directory(dir_ / "new" / "folder"));
  EXPECT_TRUE(fs::is_empty(dir_ / "new" / "folder")) << "the probe stays behind";
  put(file_.string(), "a file, not a folder");
  EXPECT_THROW(require_writable_dir(file_ / "sub"), std::runtime_error);
  // Even root cannot make files in /proc.
  EXPECT_THROW(require_writable_dir("/proc"), std::runtime_error);
}

}  // namespace
}  // namespace mill
