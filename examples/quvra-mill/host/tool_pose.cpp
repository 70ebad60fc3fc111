#include "host/tool_pose.h"

namespace mill {

pose_t tool_pose(const vec3_t& tip, const vec3_t& axis) {
  const auto [ax, ay, az] = axis;
  pose_t m{};
  if (az <= -1) {
    // Upside down: half a turn about x, where the shortest rotation is not
    // unique.
    m[0] = 1;
    m[5] = -1;
    m[10] = -1;
  } else {
    // Rodrigues' formula for the turn that takes z to axis, about z x axis.
    // Negated terms are subtracted from zero so that a zero stays +0.
    const double k = 1 / (1 + az);
    m[0] = 1 - ax * ax * k;
    m[1] = 0 - ax * ay * k;
    m[2] = 0 - ax;
    m[4] = 0 - ax * ay * k;
    m[5] = 1 - ay * ay * k;
    m[6] = 0 - ay;
    m[8] = ax;
    m[9] = ay;
    m[10] = az;
  }
  m[12] = tip[0];
  m[13] = tip[1];
  m[14] = tip[2];
  m[15] = 1;
  return m;
}

}  // namespace mill
