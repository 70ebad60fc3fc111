#pragma once

// The few pose operations that render state needs beyond geom::mat4d's
// product. Products follow mat4d: a * b applies a first, then b.

#include "geom/mat4d.h"
#include "geom/vec3.h"

namespace disp {

geom::mat4d uniform_scale(double s);
geom::mat4d translation(double x, double y, double z);

// The inverse; NaN everywhere for a singular pose, so that whatever is
// derived from it fails visibly instead of silently drawing at the origin.
geom::mat4d inverse(const geom::mat4d& m);

// Determinant of the 3x3 part: the volume scale of the pose.
double det3(const geom::mat4d& m);

// Maps p through m with the projective divide by w.
geom::vec3d apply_projective(const geom::mat4d& m, const geom::vec3d& p);

}  // namespace disp
