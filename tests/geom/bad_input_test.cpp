// Meshes from a host that the exact subsystems cannot mean are refused at
// the boundary with null, never with an abort, an escaping exception or an
// endless walk.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "geom/stl3d.h"
#include "geom/topo_stl3wfr.h"

namespace {

const std::string bad_input = std::string(QUVRA_TEST_DATA_DIR) + "/bad_input/";

// One triangle with the given third corner's z.
std::vector<double> triangle(double z) { return {0, 0, 0, 1, 0, 0, 0, 1, z, 0, 0, 1}; }

}  // namespace

TEST(ExactMeshLimits, CoordinatesThatAreNotNumbersOrTooFarAreRefused) {
  for (const double z : {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e11, -1.0000001e6}) {
    const std::vector<double> tri = triangle(z);
    EXPECT_EQ(topo_stl3wfr__new(1, tri.data(), 1.0 / 1024), nullptr) << z;
  }
  const std::vector<double> near = triangle(1e6);
  topo_stl3wfr_t* mesh = topo_stl3wfr__new(1, near.data(), 1.0 / 1024);
  EXPECT_NE(mesh, nullptr);
  topo_stl3wfr__delete(mesh);
  EXPECT_EQ(topo_stl3wfr__new(1, near.data(), 1e-20), nullptr);
}

// The reproducing files: a tetrahedron with one corner far away, NaN or
// infinite, read as a host would and made exact.
TEST(ExactMeshLimits, FilesWithBadCornersGiveNoExactMesh) {
  for (const char* name : {"far_vertex.stl", "nan_vertex.stl", "inf_vertex.stl"}) {
    stl3d_t* soup = stl3d__new_by_file(bad_input + name);
    ASSERT_NE(soup, nullptr);
    const auto count = static_cast<std::int32_t>(stl3d__tris_size(soup));
    ASSERT_GT(count, 0) << name;
    EXPECT_EQ(topo_stl3wfr__new(count, stl3d__tris_data(soup), 1.0 / 1024), nullptr) << name;
    stl3d__delete(soup);
  }
}

TEST(SoupLimits, CountWhoseByteSizeOverflowsIsRefused) {
  const std::vector<double> tri = triangle(0);
  EXPECT_EQ(stl3d__new_by_copy_array(tri.data(), std::numeric_limits<std::uint64_t>::max()), nullptr);
  EXPECT_EQ(stl3d__new_by_copy_array(tri.data(), std::numeric_limits<std::uint64_t>::max() / 96 + 1), nullptr);
}
