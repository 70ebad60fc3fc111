#include "interp/program_reader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "mill_test_support.h"

namespace mill {
namespace {

// Tests run in their own build folder, where they may write files.
std::string write_file(const std::string& name, const std::string& text) {
  std::ofstream(name, std::ios::binary) << text;
  return name;
}

TEST(ProgramReader, FormatFollowsTheExtensionThenTheFirstStatement) {
  EXPECT_EQ(detect_format("a.NGC", "CUTTER/1"), program_format::ngc);
  EXPECT_EQ(detect_format("dir/a.cls", "G0 X1"), program_format::apt);
  EXPECT_EQ(detect_format("a.aptsource", ""), program_format::apt);
  EXPECT_EQ(detect_format("a.prg", "\n$$ made by CAM\n  TOOL PATH/OP1\nGOTO/1,2,3"), program_format::apt);
  EXPECT_EQ(detect_format("a.prg", "(header / notes)\nG0 X1"), program_format::ngc);
  EXPECT_EQ(detect_format("a.prg", "#1=[4/2]"), program_format::ngc);
}

TEST(ProgramReader, ReadsEitherLanguageFromAFile) {
  const program_t ngc = read_program(write_file("square.ngc", "G0 X1\r\nG1 Y1 F50\r\n"), {});
  ASSERT_EQ(ngc.moves.size(), 2u);
  test::expect_point(ngc.moves[1].end, {1, 1, 0});
  EXPECT_EQ(ngc.files, std::vector<std::string>{"square.ngc"});

  const program_t apt = read_program(write_file("path.out", "FEDRAT/50\nGOTO/1,2,3\n"), {});
  ASSERT_EQ(apt.moves.size(), 1u);
  test::expect_point(apt.moves[0].end, {1, 2, 3});
}

TEST(ProgramReader, ErrorsNameTheFileAsGiven) {
  const std::string path = write_file("bad.ngc", "G0 X1\nG0 Y1\nG41 D1\n");
  EXPECT_EQ(test::error_of([&] { read_program(path, {}); }), "bad.ngc:3: unsupported word 'G41'");
  EXPECT_EQ(test::error_of([] { read_program("missing.ngc", {}); }), "missing.ngc:0: cannot open the file");
}

}  // namespace
}  // namespace mill
