#pragma once

// A block of stock built through the boundary, for tests of machining
// steps: its surface, whether that is closed, and the volume it encloses.

#include <array>
#include <vector>

#include "cbtr/cache/cell_triangles.h"
#include "cbtr/model/cube_tree_t.h"
#include "cbtr/substraction.h"
#include "geom/stl3d.h"
#include "soups.h"
#include "surface_checks.h"

namespace quvra_test {

inline std::size_t leaf_count(const std::shared_ptr<cbtr::cube_node_t>& node) {
  if (!node) return 0;
  std::size_t n = (node->kind & cbtr::kind_leaf) ? 1 : 0;
  for (const auto& child : cbtr::snapshot_children(*node)) n += leaf_count(child);
  return n;
}

struct soup_t {
  stl3d_t* s;
  explicit soup_t(const std::vector<geom::stl_tri_t>& tris)
      : s(stl3d__new_by_copy_array(reinterpret_cast<const double*>(tris.data()), tris.size())) {}
  ~soup_t() { stl3d__delete(s); }
};

struct stock_t {
  cube_tree_t* tree;
  stock_t(const std::array<double, 6>& b, double w) {
    soup_t block(quvra_test::box_soup(b[0], b[1], b[2], b[3], b[4], b[5]));
    tree = cube_tree__new(block.s, w, nullptr, nullptr);
  }
  ~stock_t() { cube_tree__delete(tree); }

  quvra_test::closure_t closure() const {
    std::vector<quvra_test::triangle3> tris;
    for (const cbtr::cube_tri_t& t : cbtr::list_surface(*tree)) tris.push_back({t.v[0], t.v[1], t.v[2]});
    return quvra_test::check_closure(tris);
  }
  double volume() const { return closure().volume_about_origin; }
  std::size_t leaves() const { return leaf_count(tree->root.load()); }

  // Subtracts an axis-aligned box; answers whether the stock changed.
  bool cut(const std::array<double, 6>& b, double w, bool contours = false, bool touch = false,
           double* area = nullptr) {
    soup_t tool(quvra_test::box_soup(b[0], b[1], b[2], b[3], b[4], b[5]));
    substraction_t* s = cube_tree__substract_by_stl3d(tree, tool.s, w, contours, touch);
    const bool touched = substraction__IsTouched(s);
    if (area) *area = substraction__GetContactContourArea(s);
    substraction__dtor(s);
    return touched;
  }
};

}  // namespace quvra_test
