#include "host/stl_writer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "geom/stl3d.h"
#include "host/mesh_volume.h"
#include "host/stock_session.h"

namespace mill {
namespace {

std::string bytes_of(const std::string& path) {
  std::ifstream f(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>()};
}

TEST(StlWriter, LaysOutHeaderCountNormalThenCorners) {
  const std::vector<double> tri{1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 0, 1};
  write_binary_stl("one_triangle.stl", tri, "title");
  const std::string b = bytes_of("one_triangle.stl");
  ASSERT_EQ(b.size(), 80u + 4 + 50);
  EXPECT_EQ(b.substr(0, 6), std::string("title\0", 6));
  std::uint32_t count = 0;
  std::memcpy(&count, b.data() + 80, 4);
  EXPECT_EQ(count, 1u);
  float v[12];
  std::memcpy(v, b.data() + 84, sizeof v);
  const float expected[12] = {0, 0, 1, 1, 2, 3, 4, 5, 6, 7, 8, 9};
  for (int i = 0; i < 12; ++i) EXPECT_EQ(v[i], expected[i]) << "float " << i;
}

TEST(StlWriter, TheLibraryReadsBackTheBoxItWrote) {
  const std::vector<double> box = box_surface({-1, 0, 2, 3, 5, 4});
  EXPECT_DOUBLE_EQ(enclosed_volume(box), 4 * 5 * 2);
  write_binary_stl("box.stl", box, "box");
  stl3d_t* soup = stl3d__new();
  ASSERT_EQ(stl3d__read_file("box.stl", soup), STL3D_READ_OK);
  ASSERT_EQ(stl3d__tris_size(soup), 12u);
  const std::vector<double> back(stl3d__tris_data(soup), stl3d__tris_data(soup) + 12 * 12);
  EXPECT_DOUBLE_EQ(enclosed_volume(back), 40);
  double bounds[6] = {1e300, 1e300, 1e300, -1e300, -1e300, -1e300};
  stl3d__expand_to_box3d(soup, bounds);
  EXPECT_EQ(std::vector<double>(bounds, bounds + 6), (std::vector<double>{-1, 0, 2, 3, 5, 4}));
  stl3d__delete(soup);
}

TEST(StlWriter, AnUnwritablePathIsNamedInTheError) {
  try {
    write_binary_stl("no_such_folder/x.stl", {}, "");
    FAIL() << "expected std::runtime_error";
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ(e.what(), "cannot write no_such_folder/x.stl");
  }
}

TEST(MeshVolume, ATurnedOverSurfaceHasNegativeVolume) {
  std::vector<double> box = box_surface({0, 0, 0, 2, 3, 4});
  for (std::size_t t = 0; t < box.size(); t += 12)
    for (int k = 0; k < 3; ++k) std::swap(box[t + 3 + k], box[t + 6 + k]);
  EXPECT_DOUBLE_EQ(enclosed_volume(box), -24);
}

}  // namespace
}  // namespace mill
