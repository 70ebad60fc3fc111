#pragma once

// The frame that follows a cutting edge element: t along the edge, b the
// direction the element cuts in (for a straight flute, the turning
// direction), c = b x t, and, for the flank measure, s the flank's axis.
// Built at the edge's reference angle; a sample turns it about z.

#include "geom/vec3.h"
#include "milling/edge_table.h"
#include "milling/vector_ops.h"

namespace mech {

struct edge_frame_t {
  geom::vec3d t;
  geom::vec3d c;
  geom::vec3d b;
  geom::vec3d s;
};

geom::vec3d rotate_z(const geom::vec3d& v, double angle);
geom::vec3d on_edge(const edge_point_t& p);  // (r cos theta, r sin theta, z)

// A side element from lo to up: the mean rake turns the edge's outward
// normal into the face.
edge_frame_t side_frame(const edge_point_t& lo, const edge_point_t& up, bool flank, double flank_angle);

// A bottom element from lo to up: the rake tilts the tool axis about the
// edge.
edge_frame_t bottom_frame(const edge_point_t& lo, const edge_point_t& up, double rake, bool flank, double flank_angle);

// The frame turned about z by the angle of cosine c and sine s.
edge_frame_t rotate_z(const edge_frame_t& f, double c, double s);

}  // namespace mech
