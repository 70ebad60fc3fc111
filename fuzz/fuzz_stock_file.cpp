// Any bytes as a stock file; a tree that reads is then listed, cut by a
// small cube, listed again and cleared of fly pieces, as a host would after
// loading a saved stock.

#include <array>
#include <cstdint>

#include "cbtr/cube_tree.h"
#include "cbtr/substraction.h"
#include "geom/stl3d.h"
#include "scratch_file.h"

namespace {

// A closed cube of edge 2 around the origin, as twelve-double records.
stl3d_t* new_cube_tool() {
  static const std::array<std::array<double, 3>, 8> corner = {
      {{-1, -1, -1}, {1, -1, -1}, {-1, 1, -1}, {1, 1, -1}, {-1, -1, 1}, {1, -1, 1}, {-1, 1, 1}, {1, 1, 1}}};
  static const int faces[12][3] = {{0, 2, 1}, {1, 2, 3}, {4, 5, 6}, {5, 7, 6}, {0, 1, 4}, {1, 5, 4},
                                   {2, 6, 3}, {3, 6, 7}, {0, 4, 2}, {2, 4, 6}, {1, 3, 5}, {3, 7, 5}};
  double records[12 * 12] = {};
  for (int t = 0; t < 12; ++t)
    for (int v = 0; v < 3; ++v)
      for (int a = 0; a < 3; ++a) records[t * 12 + v * 3 + a] = corner[faces[t][v]][a];
  return stl3d__new_by_copy_array(records, 12);
}

void list(const cube_tree_t* tree) {
  cube_tree__get_tris(tree, 0.0, [](const double*) {});
  cube_tree__get_rgb_tris(tree, 8.0, [](const rgb_tri*, size_t) {});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  cube_tree_t* tree = cube_tree__new_by_file(fuzz::write_scratch(data, size).c_str());
  if (!tree) return 0;
  list(tree);
  static stl3d_t* const tool = new_cube_tool();
  substraction__dtor(cube_tree__substract_by_stl3d(tree, tool, cube_tree__get_grid_width(tree), true, false));
  list(tree);
  cube_tree__remove_fly_piece(tree);
  list(tree);
  cube_tree__delete(tree);
  return 0;
}
