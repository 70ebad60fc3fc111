#pragma once

// The engagement of one move from its contact contours: the contours become
// triangles, each triangle goes to the bottom or to the side, and is cut
// with the planes z = level (side) or the circles of the rings (bottom);
// every cut segment adds the angles it spans to its slice.

#include <cstdint>
#include <span>

#include "geom/mat4d.h"
#include "milling/engagement_t.h"
#include "milling/milling_contours_t.h"

namespace mech {

struct engagement_request_t {
  std::int32_t tag = 0;
  std::span<const double> levels;       // ascending heights of the side slices
  std::span<const double> level_steps;  // thickness of the slice at each level
  geom::mat4d pose_prev;
  geom::mat4d pose_cur;
  double bottom_radius = 0;  // 0.001 or less: no bottom, all contact is side
  double ring_step = 0;
  bool clip_to_motion = false;  // keep only the front of the contact
};

engagement_t build_engagement(const milling_contours_t& contours, const engagement_request_t& request);

}  // namespace mech
