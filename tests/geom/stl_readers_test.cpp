// Reading crafted STL files: how the form is told and what each reader
// reports for broken content.

#include "geom/stl_readers.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "soups.h"
#include "stl_files.h"

namespace {

namespace fs = std::filesystem;
using geom::stl_form;
using geom::stl_status;
using geom::stl_tri_t;
using quvra_test::write_file;

class StlFiles : public ::testing::Test {
 protected:
  void SetUp() override {
    dir = fs::temp_directory_path() / ("quvra_stl_" + std::to_string(getpid()));
    fs::create_directories(dir);
  }
  void TearDown() override { fs::remove_all(dir); }
  std::string path(const std::string& name) const { return (dir / name).string(); }

  stl_status read(const std::string& name) {
    tris.clear();
    return geom::read_stl_file(path(name), tris);
  }

  fs::path dir;
  std::vector<stl_tri_t> tris;
  const std::vector<stl_tri_t> box = quvra_test::box_soup(0, 0, 0, 1, 2, 3);
};

std::string facet_text(const char* vertex_line_3) {
  return std::string("facet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\n") + vertex_line_3 +
         "endloop\nendfacet\n";
}

TEST_F(StlFiles, EmptyFileIsBinaryAndTooShort) {
  write_file(path("empty.stl"), "");
  EXPECT_EQ(geom::detect_stl_form(path("empty.stl")), stl_form::binary);
  EXPECT_EQ(read("empty.stl"), stl_status::malformed);
  EXPECT_TRUE(tris.empty());
}

TEST_F(StlFiles, MissingFileCannotBeOpened) {
  EXPECT_EQ(read("no such file.stl"), stl_status::open_failed);
  EXPECT_EQ(geom::read_text_stl(path("no such file.stl"), tris), stl_status::open_failed);
}

TEST_F(StlFiles, BinaryCountMustFitTheFile) {
  write_file(path("zero.stl"), quvra_test::binary_stl_bytes({}, "h", 0));
  EXPECT_EQ(fs::file_size(path("zero.stl")), 84u);
  EXPECT_EQ(read("zero.stl"), stl_status::ok);
  EXPECT_TRUE(tris.empty());

  write_file(path("one.stl"), quvra_test::binary_stl_bytes({}, "h", 1));
  EXPECT_EQ(read("one.stl"), stl_status::malformed);
  EXPECT_TRUE(tris.empty());

  // Twelve facets present, thirteen promised: refused before any is stored.
  write_file(path("more.stl"), quvra_test::binary_stl_bytes(box, "h", 13));
  EXPECT_EQ(read("more.stl"), stl_status::malformed);
  EXPECT_TRUE(tris.empty());

  write_file(path("negative.stl"), quvra_test::binary_stl_bytes(box, "h", -1));
  EXPECT_EQ(read("negative.stl"), stl_status::malformed);
}

TEST_F(StlFiles, BinaryCountSmallerThanTheFileIsValid) {
  write_file(path("fewer.stl"), quvra_test::binary_stl_bytes(box, "h", 5));
  EXPECT_EQ(read("fewer.stl"), stl_status::ok);
  ASSERT_EQ(tris.size(), 5u);
  EXPECT_EQ(tris[4].a, box[4].a);
}

TEST_F(StlFiles, BinaryRecordsPutVerticesFirstAndKeepTheGivenNormal) {
  std::vector<stl_tri_t> odd = {{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {0.25, -0.5, 8}}};
  quvra_test::write_binary_stl(path("odd.stl"), odd);
  EXPECT_EQ(read("odd.stl"), stl_status::ok);
  ASSERT_EQ(tris.size(), 1u);
  const double* d = reinterpret_cast<const double*>(tris.data());
  EXPECT_EQ(std::vector<double>(d, d + 12), (std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8, 9, 0.25, -0.5, 8}));
}

TEST_F(StlFiles, HeaderStartingWithSolidIsStillBinary) {
  quvra_test::write_binary_stl(path("solid.stl"), box, "solid exported by a CAD system");
  EXPECT_EQ(geom::detect_stl_form(path("solid.stl")), stl_form::binary);
  EXPECT_EQ(read("solid.stl"), stl_status::ok);
  EXPECT_EQ(tris.size(), 12u);
}

TEST_F(StlFiles, BinaryHeaderWithLineBreakThenFacetIsTakenForText) {
  quvra_test::write_binary_stl(path("tricky.stl"), box, "exported\nfacet by a careless writer");
  EXPECT_EQ(geom::detect_stl_form(path("tricky.stl")), stl_form::text);
  EXPECT_EQ(read("tricky.stl"), stl_status::malformed);
}

TEST_F(StlFiles, TextRoundTripCarriesFloatPrecision) {
  std::vector<stl_tri_t> fine = {{{0.1, 0.2, 0.3}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
  quvra_test::write_text_stl(path("fine.stl"), fine);
  EXPECT_EQ(geom::detect_stl_form(path("fine.stl")), stl_form::text);
  EXPECT_EQ(read("fine.stl"), stl_status::ok);
  ASSERT_EQ(tris.size(), 1u);
  EXPECT_EQ(tris[0].a[0], static_cast<double>(0.1f));
  EXPECT_EQ(tris[0].normal[2], 1.0);
}

TEST_F(StlFiles, TextKeywordsAreSkippedByPositionAndSpacingIsFree) {
  write_file(path("loose.stl"),
             "solid x\n\n  facet n 0 0 1 o l\n v 0 0 0 v 1 0 0\tv 0 1 0\n\n e e \nendsolid x\n"
             "anything after endsolid is ignored");
  EXPECT_EQ(read("loose.stl"), stl_status::ok);
  ASSERT_EQ(tris.size(), 1u);
  EXPECT_EQ(tris[0].c[1], 1.0);
}

TEST_F(StlFiles, EndsolidOnSecondLineGivesEmptyTextMesh) {
  write_file(path("nothing.stl"), "solid nothing\nendsolid nothing\n");
  EXPECT_EQ(geom::detect_stl_form(path("nothing.stl")), stl_form::text);
  EXPECT_EQ(read("nothing.stl"), stl_status::ok);
  EXPECT_TRUE(tris.empty());
}

TEST_F(StlFiles, TruncatedTextFacetKeepsTheFacetsBefore) {
  write_file(path("cut.stl"),
             "solid cut\n" + facet_text("vertex 0 1 0\n") + facet_text("vertex 0 1 0\n").substr(0, 60));
  EXPECT_EQ(read("cut.stl"), stl_status::malformed);
  EXPECT_EQ(tris.size(), 1u);
}

TEST_F(StlFiles, NonNumberInTextIsMalformed) {
  write_file(path("word.stl"), "solid w\n" + facet_text("vertex 0 one 0\n") + "endsolid w\n");
  EXPECT_EQ(read("word.stl"), stl_status::malformed);
  EXPECT_TRUE(tris.empty());
}

TEST_F(StlFiles, LastFacetEndingAtEndOfFileNeedsNoEndsolid) {
  std::string text = "solid open\n" + facet_text("vertex 0 1 0\n");
  text.pop_back();  // no character behind "endfacet"
  write_file(path("open.stl"), text);
  EXPECT_EQ(read("open.stl"), stl_status::ok);
  EXPECT_EQ(tris.size(), 1u);
}

TEST_F(StlFiles, FirstLineOf300CharactersMakesDetectionSayBinary) {
  const std::string body = facet_text("vertex 0 1 0\n") + "endsolid\n";
  write_file(path("299.stl"), std::string(299, 's') + "\n" + body);
  EXPECT_EQ(geom::detect_stl_form(path("299.stl")), stl_form::text);
  write_file(path("300.stl"), std::string(300, 's') + "\n" + body);
  EXPECT_EQ(geom::detect_stl_form(path("300.stl")), stl_form::binary);
}

TEST_F(StlFiles, FirstLineOf512CharactersFailsTheTextReader) {
  const std::string body = facet_text("vertex 0 1 0\n") + "endsolid\n";
  write_file(path("511.stl"), std::string(511, 's') + "\n" + body);
  EXPECT_EQ(geom::read_text_stl(path("511.stl"), tris), stl_status::ok);
  EXPECT_EQ(tris.size(), 1u);
  tris.clear();
  write_file(path("512.stl"), std::string(512, 's') + "\n" + body);
  EXPECT_EQ(geom::read_text_stl(path("512.stl"), tris), stl_status::malformed);
  EXPECT_TRUE(tris.empty());
}

TEST_F(StlFiles, OneLineTextFileIsTreatedAsBinary) {
  write_file(path("oneline.stl"), "solid x " + std::string(100, ' ') + " endsolid x");
  EXPECT_EQ(geom::detect_stl_form(path("oneline.stl")), stl_form::binary);
}

}  // namespace
