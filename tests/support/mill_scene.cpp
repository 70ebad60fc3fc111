#include "mill_scene.h"

#include "geom/stl3d.h"
#include "soups.h"

namespace quvra_test {

namespace {

stl3d_t* soup_of(const std::vector<geom::stl_tri_t>& tris) {
  return stl3d__new_by_copy_array(reinterpret_cast<const double*>(tris.data()), tris.size());
}

substraction_t* cut(cube_tree_t* tree, const std::vector<geom::stl_tri_t>& tris, double cell, bool contours) {
  stl3d_t* soup = soup_of(tris);
  substraction_t* s = cube_tree__substract_by_stl3d(tree, soup, cell, contours, false);
  stl3d__delete(soup);
  return s;
}

}  // namespace

pose16 tool_pose(const std::array<double, 3>& p) { return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, p[0], p[1], p[2], 1}; }

pose16 stock_to_tool(const std::array<double, 3>& p) { return tool_pose({-p[0], -p[1], -p[2]}); }

mill_scene_t::mill_scene_t(const std::array<double, 6>& block, double cell) : _block(block), _cell(cell) {
  stl3d_t* soup = soup_of(box_soup(block[0], block[1], block[2], block[3], block[4], block[5]));
  _tree = cube_tree__new(soup, cell, nullptr, nullptr);
  stl3d__delete(soup);
}

mill_scene_t::~mill_scene_t() { cube_tree__delete(_tree); }

void mill_scene_t::cut_path_to(const end_mill_t& tool, const std::array<double, 3>& tip) {
  substraction__dtor(
      cut(_tree, cylinder_soup(tip[0], tip[1], tool.radius, tip[2], tip[2] + tool.length, tool.sides), _cell, false));
  const double before = _block[0] - 1;
  substraction__dtor(
      cut(_tree, box_soup(before, tip[1] - tool.radius, tip[2], tip[0], tip[1] + tool.radius, tip[2] + tool.length),
          _cell, false));
}

substraction_t* mill_scene_t::cut_tool_at(const end_mill_t& tool, const std::array<double, 3>& tip) {
  return cut(_tree, cylinder_soup(tip[0], tip[1], tool.radius, tip[2], tip[2] + tool.length, tool.sides), _cell, true);
}

}  // namespace quvra_test
