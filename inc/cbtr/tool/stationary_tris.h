#pragma once

// The tool at rest: every triangle of a mesh at one pose, exact. A triangle
// whose corners meet, or fall on one line, at the pose is left out.

#include "cbtr/tool/exact_pose.h"
#include "cbtr/tool/tool_tri.h"
#include "geom/topo/topo_stl3.h"
#include "geom/topo/topo_stl3wfr_t.h"

namespace cbtr {

// Vertices moved by pose in doubles, then snapped to the resolution grid;
// triangles in the mesh's list order, corners in the mesh's order.
tool_tris_t build_stationary(geom::topo_stl3d& mesh, const geom::mat4d& pose, double resolution);

// The exact mesh's points multiplied by the exact pose; nothing is snapped.
tool_tris_t build_stationary_exact(geom::topo_stl3wfr_t& mesh, const exact_pose_t& pose);

}  // namespace cbtr
