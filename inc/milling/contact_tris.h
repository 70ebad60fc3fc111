#pragma once

// The contact contours as triangles: each loop fanned from its first point.
// Clipped to the motion, only the part of each triangle whose surface moves
// into the material is kept: the front of the contact.

#include <array>
#include <vector>

#include "geom/mat4d.h"
#include "geom/vec3.h"
#include "milling/milling_contours_t.h"

namespace mech {

struct contact_tri_t {
  std::array<geom::vec3d, 3> v;
  geom::vec3d normal{0, 0, 0};  // unit
  bool has_normal = false;
};

// The unit normal of the corners' winding; not finite when they are collinear.
geom::vec3d winding_normal(const contact_tri_t& t);

// Every loop of at least 3 points, fanned as (p0, p[i-1], p[i]), without
// normals.
std::vector<contact_tri_t> fan_contours(const milling_contours_t& contours);

// Only loops whose lowest point is at least lowest_z, fanned with normals,
// each triangle cut along where the motion of its corners under motion (the
// difference of two poses) turns from into to out of the surface; triangles
// without a corner moving into it are dropped.
std::vector<contact_tri_t> fan_contours_clipped(const milling_contours_t& contours, const geom::mat4d& motion,
                                                double lowest_z);

}  // namespace mech
