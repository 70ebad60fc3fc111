#include "cbtr/tool/sweep_chooser.h"

#include <cmath>

#include "cbtr/tool/convex_sweep.h"
#include "cbtr/tool/linear_sweep.h"
#include "cbtr/tool/stationary_tris.h"

namespace cbtr {

namespace {

// Compared as values: a NaN differs from everything, itself included.
bool same_elements(const geom::mat4d& a, const geom::mat4d& b, int from, int to) {
  for (int i = from; i < to; ++i)
    if (!(a.m[i] == b.m[i])) return false;
  return true;
}

// The translation component of largest magnitude; ties go to x, then y.
double longest_component(const geom::mat4d& start, const geom::mat4d& end) {
  double longest = 0;
  for (int i = 12; i < 15; ++i) {
    const double d = end.m[i] - start.m[i];
    if (std::fabs(d) > std::fabs(longest)) longest = d;
  }
  return longest;
}

}  // namespace

tool_tris_t build_sweeping(geom::topo_stl3d& mesh, geom::topo_stl3wfr_t& exact_mesh, const geom::mat4d& start,
                           const geom::mat4d& end, double resolution, bool allow_rotation) {
  const exact_pose_t exact_end = to_exact_pose(end, resolution);
  if (!same_elements(start, end, 0, 12)) {
    if (allow_rotation) return build_convex_sweep(mesh, start, end, resolution);
    return build_stationary_exact(exact_mesh, exact_end);
  }
  if (same_elements(start, end, 12, 16)) return build_stationary_exact(exact_mesh, exact_end);
  // Shorter than two grid steps: the snapped poses could not tell start
  // from end apart in any useful way.
  if (2 * resolution > std::fabs(longest_component(start, end))) return build_stationary_exact(exact_mesh, exact_end);
  return build_linear_sweep(exact_mesh, to_exact_pose(start, resolution), exact_end);
}

}  // namespace cbtr
