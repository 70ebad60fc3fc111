#pragma once

// A flat end mill cutting a block through the boundary, as a host drives
// one feed move: the path so far is cut first (the tool at its previous
// place and the channel it left behind), then the tool at its current place
// is taken away with contact contours. The tool stays upright and only
// translates, so its pose is its tip's position.

#include <array>

#include "cbtr/cube_tree.h"
#include "cbtr/substraction.h"

namespace quvra_test {

using pose16 = std::array<double, 16>;

// The pose that puts the tool's tip at p, and its inverse.
pose16 tool_pose(const std::array<double, 3>& p);
pose16 stock_to_tool(const std::array<double, 3>& p);

struct end_mill_t {
  double radius;
  double length;
  int sides = 96;
};

class mill_scene_t {
 public:
  // A block (min xyz, max xyz) at cells of width cell.
  mill_scene_t(const std::array<double, 6>& block, double cell);
  ~mill_scene_t();
  mill_scene_t(const mill_scene_t&) = delete;
  mill_scene_t& operator=(const mill_scene_t&) = delete;

  // Takes away the tool at tip and everything it swept coming from -x
  // along the block at tip's height, without contours.
  void cut_path_to(const end_mill_t& tool, const std::array<double, 3>& tip);

  // The tool at tip taken away, with contours; free with substraction__dtor.
  substraction_t* cut_tool_at(const end_mill_t& tool, const std::array<double, 3>& tip);

 private:
  cube_tree_t* _tree;
  std::array<double, 6> _block;
  double _cell;
};

}  // namespace quvra_test
