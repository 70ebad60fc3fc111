// The display reads a stock while a host thread cuts it: every read sees a
// tree it can walk, and the cuts end in a closed surface.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "cbtr/cache/cell_triangles.h"
#include "cbtr/cube_tree.h"
#include "cbtr/substraction.h"
#include "geom/stl3d.h"
#include "soups.h"
#include "surface_checks.h"

namespace {

stl3d_t* soup_of(const std::vector<geom::stl_tri_t>& tris) {
  return stl3d__new_by_copy_array(reinterpret_cast<const double*>(tris.data()), tris.size());
}

TEST(ConcurrentRead, ListingTheSurfaceWhileCuttingIsSafe) {
  stl3d_t* block = soup_of(quvra_test::box_soup(0.3, 0.2, 0.1, 10.7, 8.9, 6.35));
  cube_tree_t* tree = cube_tree__new(block, 0.5, nullptr, nullptr);
  std::atomic<bool> cutting{true};
  std::atomic<std::size_t> reads{0};
  std::thread reader([&] {
    while (cutting) {
      const auto tris = cbtr::list_surface(*tree);
      double box[6] = {1e300, 1e300, 1e300, -1e300, -1e300, -1e300};
      cube_tree__ExpandToBox3d(tree, box);
      EXPECT_FALSE(tris.empty());
      ++reads;
    }
  });
  for (double x = 1.0; x + 2.0 <= 9.0; x += 0.4) {
    stl3d_t* tool = soup_of(quvra_test::box_soup(x, 3.3, 4.1, x + 2.0, 5.3, 8.0));
    substraction__dtor(cube_tree__substract_by_stl3d(tree, tool, 0.5, true, false));
    stl3d__delete(tool);
  }
  cutting = false;
  reader.join();
  EXPECT_GT(reads.load(), 0u);
  std::vector<quvra_test::triangle3> tris;
  for (const cbtr::cube_tri_t& t : cbtr::list_surface(*tree)) tris.push_back({t.v[0], t.v[1], t.v[2]});
  EXPECT_EQ(quvra_test::check_closure(tris).open_lines, 0u);
  cube_tree__delete(tree);
  stl3d__delete(block);
}

}  // namespace
