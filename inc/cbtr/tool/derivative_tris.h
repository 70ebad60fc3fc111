#pragma once

// Floating triangles with their contact-test data, built from a soup or a
// welded mesh moved by a pose.

#include "geom/Stl3d.h"
#include "geom/derivative_cached_tri3d.h"
#include "geom/mat4d.h"
#include "geom/topo/topo_stl3.h"

namespace cbtr {

// Fills each soup triangle's NaN normal from its corners first.
derivative_cached_tri3d_vector derivative_tris_of(geom::stl3d_t& soup, const geom::mat4d& pose);

derivative_cached_tri3d_vector derivative_tris_of(geom::topo_stl3d& mesh, const geom::mat4d& pose);

}  // namespace cbtr
