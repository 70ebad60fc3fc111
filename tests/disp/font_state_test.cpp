// The display's font: the default file looked up in the working directory,
// a host's file or bytes, and the end of the process on a missing file.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "disp/font.h"
#include "disp/font_state.h"
#include "gl_test_support.h"

namespace {

std::vector<char> read_bytes(const char* path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::string face_name() {
  std::lock_guard lock(disp::font_mutex());
  const FT_Face face = disp::font_face();
  return face ? std::string(face->family_name) + " " + face->style_name : "";
}

int face_pixel_height() {
  std::lock_guard lock(disp::font_mutex());
  return disp::font_face() ? disp::font_face()->size->metrics.y_ppem : 0;
}

TEST(FontState, InitDispOpensTheDefaultFileInTheWorkingDirectory) {
  QV_REQUIRE_GL();
  EXPECT_TRUE(disp::font_is_set());
  EXPECT_EQ(face_name(), "DejaVu Sans Book");
  EXPECT_EQ(face_pixel_height(), 20);
}

TEST(FontState, AHostFileOrHostBytesReplaceTheFace) {
  disp__set_font_file("/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf");
  EXPECT_EQ(face_name(), "DejaVu Sans Mono Book");

  std::vector<char> bytes = read_bytes(QUVRA_TEST_FONT);
  ASSERT_FALSE(bytes.empty());
  disp__set_font_memory(bytes.data(), static_cast<int32_t>(bytes.size()));
  // The library keeps its own copy of the bytes.
  std::fill(bytes.begin(), bytes.end(), '\0');
  bytes.clear();
  bytes.shrink_to_fit();
  EXPECT_EQ(face_name(), "DejaVu Sans Book");
  EXPECT_EQ(face_pixel_height(), 20);
}

TEST(FontState, EmptyOrNullFontBytesAreIgnored) {
  disp__set_font_file(QUVRA_TEST_FONT);
  const std::vector<char> bytes = read_bytes(QUVRA_TEST_FONT);
  disp__set_font_memory(nullptr, 100);
  disp__set_font_memory(bytes.data(), 0);
  disp__set_font_memory(bytes.data(), -5);
  EXPECT_EQ(face_name(), "DejaVu Sans Book");
}

TEST(FontStateDeathTest, AMissingFontFileEndsTheProcessNamingThePath) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(disp__set_font_file("no/such/dir/font.ttf"),
               "Program abort: freetype init lib failed. File is not accessible: "
               "no/such/dir/font.ttf\nAt disp::_init_ft");
}

TEST(FontStateDeathTest, BytesThatAreNotAFontEndTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const char junk[] = "definitely not a font";
  EXPECT_DEATH(disp__set_font_memory(junk, sizeof junk), "freetype init memory face failed");
}

}  // namespace
