#pragma once

// Contact of one step seen from the tool: the loops along which the tool's
// surface met the stock, in the tool's frame, where z is the tool axis and
// z = 0 the tip. Immutable once made.

#include <vector>

#include "geom/box3d.h"
#include "geom/mat4d.h"
#include "geom/vec3.h"

namespace cbtr {
class step_result_t;
}

namespace mech {

using contour_loop_t = std::vector<geom::vec3d>;

struct milling_contours_t {
  std::vector<contour_loop_t> loops;
  geom::box3d box;

  // The step's contours, each point moved by stock_to_tool, each loop wound
  // to face out of the tool (the step's own polygons face into it); a
  // closing repeated point stays.
  static milling_contours_t from_step(const cbtr::step_result_t& step, const geom::mat4d& stock_to_tool);

  // The y extent (across the feed) of the points above z when they are the
  // majority, else of all points: the flank's width or the whole contact's.
  // 0 without points; a NaN y makes it NaN.
  double plural_cutting_width(double z) const;

  // Half the absolute projection of each loop's fan area on a one-sided form
  // of direction: y counts by its size, and z only when it points down.
  double projected_area(const geom::vec3d& direction) const;
};

}  // namespace mech
