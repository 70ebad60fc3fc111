#pragma once

// A stick convex tool placed in the world. Since the body is convex and of
// revolution, a point is inside when its height along the axis lies within
// the profile and its distance from the axis is within the profile's radius
// there; and the body lies within the union of one cylinder per band, which
// bounds the distance from a cell to the body from below.

#include <vector>

#include "cbtr/stick_convex.h"
#include "geom/mat4d.h"
#include "geom/vec3.h"

namespace cbtr {

// Heights (p[0], p[1] of the shape) along the axis, in world units.
struct stick_band_t {
  stick_segment_t shape;
  double r_max;  // the band's largest radius
};

class stick_tool_t {
 public:
  // The matrix places the tool's z axis; entries within 1e-7 of 0, 1 or -1
  // are taken as those values, so that axis-aligned placements are exact.
  stick_tool_t(const stick_convex_t& stick, const geom::mat4d& placement);

  bool empty() const { return _bands.empty(); }
  // Positive inside, zero on the surface, negative outside; continuous
  // along any line, which lets a crossing be found by root finding.
  double inside_margin(const geom::vec3d& p) const;
  // Inside or on the surface.
  bool contains(const geom::vec3d& p) const;
  // A lower bound of the distance from p to the body.
  double distance_below(const geom::vec3d& p) const;
  // The surface at a point of it: 1 the flat tip end, 4 the flat shank end,
  // 2 the curved side.
  int surface_code(const geom::vec3d& p, double tolerance) const;

 private:
  // Height along the axis and distance from it.
  void to_local(const geom::vec3d& p, double& h, double& r) const;
  // The profile's radius at a height within the tool.
  double radius_at(double h) const;

  std::vector<stick_band_t> _bands;
  geom::vec3d _base, _axis;
};

}  // namespace cbtr
