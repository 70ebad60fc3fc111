#pragma once

// The exact volume that a closed tool sweeps along a pure translation:
//   back faces    triangles facing away from the motion, at the start pose
//   front faces   triangles facing the motion or edge-on to it, at the end
//   ruled faces   two triangles over every silhouette edge (a line between
//                 a front and a back face), joining its start and end copies
// The set is closed for a closed mesh. A non-convex tool overlaps itself
// inside the set, which the subtraction does not mind. The caller
// guarantees that both poses rotate alike; only their translations differ.

#include "cbtr/tool/exact_pose.h"
#include "cbtr/tool/tool_tri.h"
#include "geom/topo/topo_stl3wfr_t.h"

namespace cbtr {

tool_tris_t build_linear_sweep(geom::topo_stl3wfr_t& mesh, const exact_pose_t& start, const exact_pose_t& end);

}  // namespace cbtr
