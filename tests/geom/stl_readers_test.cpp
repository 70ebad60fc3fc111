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

// The form is told from the first line: text when it is short, ends and a
// "facet" follows; binary otherwise, whatever the header says.
TEST_F(StlFiles, FormIsToldByTheFirstLineAndAFacetAfterIt) {
  const std::string body = facet_text("vertex 0 1 0\n") + "endsolid\n";
  struct row_t {
    std::string bytes;
    stl_form form;
  } const rows[] = {
      {"", stl_form::binary},
      {quvra_test::binary_stl_bytes(box, "solid exported by a CAD system", 12), stl_form::binary},
      {quvra_test::binary_stl_bytes(box, "exported\nfacet by a careless writer", 12), stl_form::text},
      {"solid nothing\nendsolid nothing\n", stl_form::text},
      {std::string(299, 's') + "\n" + body, stl_form::text},
      {std::string(300, 's') + "\n" + body, stl_form::binary},
      {"solid x " + std::string(100, ' ') + " endsolid x", stl_form::binary},
  };
  for (const row_t& r : rows) {
    write_file(path("form.stl"), r.bytes);
    EXPECT_EQ(geom::detect_stl_form(path("form.stl")), r.form) << r.bytes.substr(0, 40);
  }
}

// What each reader keeps and says for good, short and broken content.
TEST_F(StlFiles, ReadersReportBrokenContentAndKeepWhatCameBefore) {
  std::string open = "solid open\n" + facet_text("vertex 0 1 0\n");
  open.pop_back();  // no character behind "endfacet": no endsolid needed
  const std::string body = facet_text("vertex 0 1 0\n") + "endsolid\n";
  struct row_t {
    std::string bytes;
    stl_status status;
    std::size_t tris;
  } const rows[] = {
      {"", stl_status::malformed, 0},
      {quvra_test::binary_stl_bytes({}, "h", 0), stl_status::ok, 0},
      {quvra_test::binary_stl_bytes({}, "h", 1), stl_status::malformed, 0},
      // Twelve facets present, thirteen promised: refused before any is stored.
      {quvra_test::binary_stl_bytes(box, "h", 13), stl_status::malformed, 0},
      {quvra_test::binary_stl_bytes(box, "h", -1), stl_status::malformed, 0},
      {quvra_test::binary_stl_bytes(box, "h", 5), stl_status::ok, 5},
      {quvra_test::binary_stl_bytes(box, "solid exported by a CAD system", 12), stl_status::ok, 12},
      {quvra_test::binary_stl_bytes(box, "exported\nfacet by a careless writer", 12), stl_status::malformed, 0},
      {"solid x\n\n  facet n 0 0 1 o l\n v 0 0 0 v 1 0 0\tv 0 1 0\n\n e e \nendsolid x\nanything after",
       stl_status::ok, 1},
      {"solid cut\n" + facet_text("vertex 0 1 0\n") + facet_text("vertex 0 1 0\n").substr(0, 60),
       stl_status::malformed, 1},
      {"solid w\n" + facet_text("vertex 0 one 0\n") + "endsolid w\n", stl_status::malformed, 0},
      {open, stl_status::ok, 1},
      {std::string(299, 's') + "\n" + body, stl_status::ok, 1},
  };
  for (const row_t& r : rows) {
    write_file(path("read.stl"), r.bytes);
    EXPECT_EQ(read("read.stl"), r.status) << r.bytes.substr(0, 40);
    EXPECT_EQ(tris.size(), r.tris) << r.bytes.substr(0, 40);
  }
  EXPECT_EQ(read("no such file.stl"), stl_status::open_failed);
  EXPECT_EQ(geom::read_text_stl(path("no such file.stl"), tris), stl_status::open_failed);
  // The text reader takes a first line of 511 characters, not one of 512.
  write_file(path("511.stl"), std::string(511, 's') + "\n" + body);
  EXPECT_EQ(geom::read_text_stl(path("511.stl"), tris), stl_status::ok);
  tris.clear();
  write_file(path("512.stl"), std::string(512, 's') + "\n" + body);
  EXPECT_EQ(geom::read_text_stl(path("512.stl"), tris), stl_status::malformed);
  EXPECT_TRUE(tris.empty());
}

// Binary records put the vertices first and keep the given normal; text
// carries float precision.
TEST_F(StlFiles, RecordsKeepVerticesAndGivenNormalAtFloatPrecision) {
  std::vector<stl_tri_t> odd = {{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {0.25, -0.5, 8}}};
  quvra_test::write_binary_stl(path("odd.stl"), odd);
  EXPECT_EQ(read("odd.stl"), stl_status::ok);
  ASSERT_EQ(tris.size(), 1u);
  const double* d = reinterpret_cast<const double*>(tris.data());
  EXPECT_EQ(std::vector<double>(d, d + 12), (std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8, 9, 0.25, -0.5, 8}));
  std::vector<stl_tri_t> fine = {{{0.1, 0.2, 0.3}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
  quvra_test::write_text_stl(path("fine.stl"), fine);
  EXPECT_EQ(read("fine.stl"), stl_status::ok);
  ASSERT_EQ(tris.size(), 1u);
  EXPECT_EQ(tris[0].a[0], static_cast<double>(0.1f));
  EXPECT_EQ(tris[0].normal[2], 1.0);
  write_file(path("fewer.stl"), quvra_test::binary_stl_bytes(box, "h", 5));
  read("fewer.stl");
  EXPECT_EQ(tris[4].a, box[4].a);
}

}  // namespace
