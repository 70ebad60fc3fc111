#pragma once

// The volume of a move with rotation, taken as the convex hull of the tool
// at both poses: exact for a convex tool and a rotation small enough that
// the tool's path stays inside that hull, and deliberately so for a
// non-convex one, whose hollows are filled.
//
// Only the points that can be on the hull go in: a vertex at the start pose
// when it lies on a triangle facing away from its motion, and at the end
// pose when it lies on one facing its motion. Triangles whose corners all
// move clearly out of them at one pose, with the rest of their flat face,
// seed the wrapping there; the wrapping checks what the seeds gave it.

#include "cbtr/tool/tool_tri.h"
#include "geom/mat4d.h"
#include "geom/topo/topo_stl3.h"

namespace cbtr {

// Vertices move by the poses in doubles and are snapped to the resolution
// grid; every decision after that is exact. Unit normals of the result are
// left NaN. Equal poses give the tool at rest.
tool_tris_t build_convex_sweep(geom::topo_stl3d& mesh, const geom::mat4d& start, const geom::mat4d& end,
                               double resolution);

}  // namespace cbtr
