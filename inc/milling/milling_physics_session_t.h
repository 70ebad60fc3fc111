#pragma once

// A tool as the force model sees it: its flutes as edge tables, and the
// cutting coefficients. Immutable once made.

#include <vector>

#include "milling/cutting_coefficients_t.h"
#include "milling/edge_table.h"

namespace mech {

struct flute_t {
  std::vector<edge_point_t> side_edge;  // ascending z
  double z_min = 0;
  double z_max = 0;
  bool has_bottom = false;
  std::vector<edge_point_t> bottom_edge;  // ascending r
};

struct milling_physics_session_t {
  double flank_angle = 0;   // turns the flank's frame
  double min_chip = 0;      // thickness below which the edge force fades
  double power_factor = 1;  // scale of the power output
  double feed_ref_z = 0;    // height of the point whose motion is the feed
  std::vector<flute_t> flutes;
  cutting_coefficients_t coefficients;
};

}  // namespace mech
