#include "common/log_sink.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::vector<std::string> received;
void collect(const char* msg) { received.emplace_back(msg); }

std::string read_all(const fs::path& p) {
  std::ifstream in(p);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

// The log file opens once per process, so each case that cares about it runs
// in a fresh child process, in a working directory of its own.
class LogSinks : public ::testing::Test {
 protected:
  void SetUp() override {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    received.clear();
    dir = fs::temp_directory_path() / ("quvra_log_" + std::to_string(getpid()) + "_" +
                                       ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::create_directories(dir);
  }
  void TearDown() override {
    set_log_func(nullptr);
    for (const auto& entry : fs::recursive_directory_iterator(dir)) fs::permissions(entry.path(), fs::perms::owner_all);
    fs::remove_all(dir);
  }
  // Runs body in a fresh child process and expects it to return true.
  template <class Body>
  void expect_in_child(Body body) {
    EXPECT_EXIT(std::exit(body() ? 0 : 1), ::testing::ExitedWithCode(0), "");
  }

  fs::path dir;
};

// A line reaches console, file and callback bare; a mask selects sinks, and
// a null callback switches only that sink off.
TEST_F(LogSinks, MaskSelectsConsoleFileAndCallback) {
  expect_in_child([&] {
    fs::current_path(dir);
    set_log_func(collect);
    testing::internal::CaptureStdout();
    common::log_line("first line");
    common::log_line("only callback", common::log_sink_callback);
    common::log_line("only file", common::log_sink_file);
    set_log_func(nullptr);
    common::log_line("no callback", common::log_sinks_all);
    const std::string out = testing::internal::GetCapturedStdout();
    return out == "first line\nno callback\n" &&
           read_all("log-cpp.txt") == "first line\nonly file\nno callback\n" &&
           received == std::vector<std::string>{"first line", "only callback"};
  });
}

TEST_F(LogSinks, FileIsTruncatedOnFirstUse) {
  std::ofstream(dir / "log-cpp.txt") << "left by an earlier run\n";
  expect_in_child([&] {
    fs::current_path(dir);
    common::log_line("fresh", common::log_sink_file);
    return read_all("log-cpp.txt") == "fresh\n";
  });
}

// A directory in which nobody can create a file. Permission bits do not stop
// root, so under root the test falls back to /proc, which refuses new files
// to everyone.
fs::path unwritable_directory(const fs::path& dir) {
  fs::create_directories(dir);
  fs::permissions(dir, fs::perms::owner_read | fs::perms::owner_exec);
  const fs::path probe = dir / "probe";
  if (std::FILE* f = std::fopen(probe.c_str(), "w")) {
    std::fclose(f);
    fs::remove(probe);
    return "/proc";
  }
  return dir;
}

TEST_F(LogSinks, ReadOnlyDirectoryDropsFileSinkSilentlyAndRetriesLater) {
  const fs::path locked = unwritable_directory(dir / "locked");
  const fs::path writable = dir / "writable";
  fs::create_directories(writable);
  expect_in_child([&] {
    fs::current_path(locked);
    set_log_func(collect);
    testing::internal::CaptureStdout();
    common::log_line("nowhere to write");
    const bool others_work = testing::internal::GetCapturedStdout() == "nowhere to write\n" && received.size() == 1 &&
                             !fs::exists("log-cpp.txt");
    fs::current_path(writable);
    common::log_line("now it can", common::log_sink_file);
    return others_work && read_all("log-cpp.txt") == "now it can\n";
  });
}

}  // namespace
