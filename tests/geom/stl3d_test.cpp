// The soup as a host sees it through the stl3d__ family.

#include "geom/stl3d.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <limits>

#include "geom/stl3d_t.h"
#include "soups.h"
#include "stl_files.h"

namespace {

namespace fs = std::filesystem;
constexpr double inf = std::numeric_limits<double>::infinity();

class Stl3dBoundary : public ::testing::Test {
 protected:
  void SetUp() override {
    dir = fs::temp_directory_path() / ("quvra_stl3d_" + std::to_string(getpid()));
    fs::create_directories(dir);
  }
  void TearDown() override { fs::remove_all(dir); }
  std::string path(const std::string& name) const { return (dir / name).string(); }
  fs::path dir;
};

struct mesh_guard {
  stl3d_t* m;
  ~mesh_guard() { stl3d__delete(m); }
};

std::vector<double> flat(const std::vector<geom::stl_tri_t>& tris) {
  const double* d = reinterpret_cast<const double*>(tris.data());
  return {d, d + 12 * tris.size()};
}

std::vector<double> contents(const stl3d_t* m) {
  const double* d = stl3d__tris_data(m);
  return d ? std::vector<double>(d, d + 12 * stl3d__tris_size(m)) : std::vector<double>{};
}

// A copy keeps the records and their order in storage of exactly their
// size; null data is refused unless the count is zero.
TEST_F(Stl3dBoundary, NewAndCopiedMeshesHoldExactlyTheirRecords) {
  mesh_guard fresh{stl3d__new()};
  EXPECT_EQ(stl3d__tris_size(fresh.m), 0u);
  EXPECT_EQ(stl3d__tris_data(fresh.m), nullptr);
  const auto box = quvra_test::box_soup(-1, -2, -3, 1, 2, 3);
  const std::vector<double> records = flat(box);
  mesh_guard g{stl3d__new_by_copy_array(records.data(), box.size())};
  EXPECT_EQ(contents(g.m), records);
  EXPECT_EQ(g.m->tris.capacity(), box.size());
  EXPECT_EQ(stl3d__new_by_copy_array(nullptr, 3), nullptr);
  mesh_guard none{stl3d__new_by_copy_array(nullptr, 0)};
  ASSERT_NE(none.m, nullptr);
  EXPECT_EQ(stl3d__tris_size(none.m), 0u);
}

TEST_F(Stl3dBoundary, MissingFileGivesEmptyMeshAndAWarningNamingStatusAndPath) {
  const std::string missing = path("gone.stl");
  testing::internal::CaptureStderr();
  mesh_guard g{stl3d__new_by_file(missing)};
  const std::string report = testing::internal::GetCapturedStderr();
  ASSERT_NE(g.m, nullptr);
  EXPECT_EQ(stl3d__tris_size(g.m), 0u);
  EXPECT_EQ(report, "Program abort: stl_process_status[1]:" + missing +
                        "\nAt geom::stl3d_t::stl3d_t\nDetail: at line " +
                        report.substr(report.find("line ") + 5, report.find(" , in") - report.find("line ") - 5) +
                        " , in file src/geom/stl3d_t\n");
}

TEST_F(Stl3dBoundary, MalformedFileKeepsWhatWasReadAndWarns) {
  const auto box = quvra_test::box_soup(0, 0, 0, 1, 1, 1);
  std::string text = quvra_test::text_stl(box);
  text.resize(text.find("facet", text.find("endfacet") + 8) + 40);  // second facet cut short
  quvra_test::write_file(path("cut.stl"), text);
  testing::internal::CaptureStderr();
  mesh_guard g{stl3d__new_by_file(path("cut.stl"))};
  EXPECT_NE(testing::internal::GetCapturedStderr().find("stl_process_status[2]:"), std::string::npos);
  EXPECT_EQ(stl3d__tris_size(g.m), 1u);
}

// A good file reads without a warning, and a second one adds to the mesh.
TEST_F(Stl3dBoundary, TwoFilesReadIntoOneMeshInReadingOrder) {
  const auto first = quvra_test::box_soup(0, 0, 0, 1, 1, 1);
  const auto second = quvra_test::sphere_soup(2, 4, 5);
  quvra_test::write_text_stl(path("first.stl"), first);
  quvra_test::write_binary_stl(path("second.stl"), second);
  testing::internal::CaptureStderr();
  mesh_guard g{stl3d__new_by_file(path("first.stl"))};
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(stl3d__read_file(path("second.stl"), g.m), STL3D_READ_OK);
  ASSERT_EQ(stl3d__tris_size(g.m), first.size() + second.size());
  std::vector<double> expected = flat(first);
  for (double d : flat(second)) expected.push_back(static_cast<float>(d));
  EXPECT_EQ(contents(g.m), expected);
}

TEST_F(Stl3dBoundary, ReadFileReportsStatusWithoutWarningAndKeepsTheMesh) {
  const auto box = quvra_test::box_soup(0, 0, 0, 1, 1, 1);
  mesh_guard g{stl3d__new_by_copy_array(flat(box).data(), box.size())};
  testing::internal::CaptureStderr();
  EXPECT_EQ(stl3d__read_file(path("gone.stl"), g.m), STL3D_READ_OPEN_FAILED);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(stl3d__tris_size(g.m), box.size());
  EXPECT_EQ(stl3d__read_file(path("gone.stl"), nullptr), STL3D_READ_OPEN_FAILED);
}

TEST_F(Stl3dBoundary, BoxGrowsOverFiniteVerticesOnlyAndAccumulates) {
  std::vector<geom::stl_tri_t> tris = {{{0, 0, 0}, {1, 2, 3}, {-1, 0, 5}, {100, 100, 100}}};
  mesh_guard g{stl3d__new_by_copy_array(flat(tris).data(), 1)};
  double box[6] = {inf, inf, inf, -inf, -inf, -inf};
  stl3d__expand_to_box3d(g.m, box);
  EXPECT_EQ(std::vector<double>(box, box + 6), (std::vector<double>{-1, 0, 0, 1, 2, 5}));

  std::vector<geom::stl_tri_t> far = {{{10, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 1}}};
  mesh_guard g2{stl3d__new_by_copy_array(flat(far).data(), 1)};
  stl3d__expand_to_box3d(g2.m, box);
  EXPECT_EQ(box[3], 10);
  EXPECT_EQ(box[0], -1);
  // NaN coordinates and empty meshes leave the box alone.
  const double nan = std::nan("");
  std::vector<geom::stl_tri_t> nans = {{{nan, nan, nan}, {nan, 1, nan}, {nan, nan, nan}, {0, 0, 1}}};
  mesh_guard g3{stl3d__new_by_copy_array(flat(nans).data(), 1)};
  double nan_box[6] = {inf, inf, inf, -inf, -inf, -inf};
  stl3d__expand_to_box3d(g3.m, nan_box);
  EXPECT_EQ(nan_box[1], 1);
  EXPECT_EQ(nan_box[4], 1);
  EXPECT_EQ(nan_box[0], inf);
  EXPECT_EQ(nan_box[3], -inf);

  mesh_guard empty{stl3d__new()};
  double unit[6] = {0, 0, 0, 1, 1, 1};
  stl3d__expand_to_box3d(empty.m, unit);
  EXPECT_EQ(std::vector<double>(unit, unit + 6), (std::vector<double>{0, 0, 0, 1, 1, 1}));
}

TEST_F(Stl3dBoundary, NullArgumentsAreHarmless) {
  stl3d__delete(nullptr);
  EXPECT_EQ(stl3d__tris_size(nullptr), 0u);
  EXPECT_EQ(stl3d__tris_data(nullptr), nullptr);
  double box[6] = {1, 2, 3, 4, 5, 6};
  stl3d__expand_to_box3d(nullptr, box);
  EXPECT_EQ(box[5], 6);
  mesh_guard g{stl3d__new()};
  stl3d__expand_to_box3d(g.m, nullptr);
}

}  // namespace
