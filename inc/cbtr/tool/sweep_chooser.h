#pragma once

// Which tool volume a move gets:
//   poses equal, or closer than two grid steps   the tool at the end pose
//   rotations differ (or a pose holds a NaN)      the convex sweep of mesh,
//                                                 or with rotation not
//                                                 allowed, the tool at the
//                                                 end pose: the start is
//                                                 ignored
//   translation only                              the exact linear sweep
// Both meshes are the same tool: mesh in doubles, exact_mesh in fractions.

#include "cbtr/tool/tool_tri.h"
#include "geom/mat4d.h"
#include "geom/topo/topo_stl3.h"
#include "geom/topo/topo_stl3wfr_t.h"

namespace cbtr {

tool_tris_t build_sweeping(geom::topo_stl3d& mesh, geom::topo_stl3wfr_t& exact_mesh, const geom::mat4d& start,
                           const geom::mat4d& end, double resolution, bool allow_rotation);

}  // namespace cbtr
