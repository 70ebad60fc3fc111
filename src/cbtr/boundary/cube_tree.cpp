#include "cbtr/cube_tree.h"

#include "cbtr/cube_tree_t.h"

extern "C" {

void cube_tree__delete(cube_tree_t* tree) noexcept { delete tree; }

double cube_tree__get_grid_width(const cube_tree_t* tree) noexcept {
  return tree ? tree->grid_width() : 0.0;
}
}
