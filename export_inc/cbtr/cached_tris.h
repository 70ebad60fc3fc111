#ifndef QUVRA_CBTR_CACHED_TRIS_H
#define QUVRA_CBTR_CACHED_TRIS_H

/* Tool volumes: the exact triangles of a tool at rest or swept along one
   move, ready to be cut from or added to a cube tree. One volume may be
   applied to many trees. C++ hosts only (the meshes are C++ classes).

   Poses are sixteen doubles, column-major: a point maps to
   x' = m[0]x + m[4]y + m[8]z + m[12], and so on; m[12..14] is the
   translation. resolution is the grid on which doubles become exact, the
   same as the stock's. */

#include "geom/topo_stl3d.h"
#include "geom/topo_stl3wfr.h"
#include "quvra_export.h"

namespace cbtr {
class cached_tris_t;
}
typedef cbtr::cached_tris_t cached_tris_t;

extern "C" {

/* The tool mesh at the pose mat, its vertices snapped to the grid.
   Triangles that collapse on the grid are left out. Owned by the caller,
   free with delete_cached_tris. Null for a null mesh or pose, a pose with a
   NaN, an infinity or an entry beyond 1e6 in magnitude, a mesh whose placed
   points reach beyond 1e6, a resolution below 2^-48 or not finite, or when
   memory runs out. The mesh is only read. */
QV_API cached_tris_t* new_stationary_cached_tris(topo_stl3d* mesh, const double* mat, double resolution) noexcept;

/* The exact volume the tool sweeps from start to end. The caller guarantees
   a pure translation: rotations are taken from end alone. Owned by the
   caller; null as for new_stationary_cached_tris. */
QV_API cached_tris_t* new_linear_sweeping_cached_tris(topo_stl3wfr_t* exact_mesh, const double* start,
                                                      const double* end, double resolution) noexcept;

/* The convex hull of the tool at both poses, for moves with rotation; a
   non-convex tool has its hollows filled. Owned by the caller; null as for
   new_stationary_cached_tris. */
QV_API cached_tris_t* new_nonlinear_sweeping_cached_tris(topo_stl3d* mesh, const double* start, const double* end,
                                                         double resolution) noexcept;

/* Chooses for one move of the tool given as both meshes: the tool at the
   end pose when the poses are equal or less than two grid steps apart; the
   convex sweep of mesh when the rotations differ and allow_rotation is set,
   else the tool at the end pose; the exact linear sweep of exact_mesh for a
   translation. Owned by the caller; null as for new_stationary_cached_tris,
   or when either mesh is null. */
QV_API cached_tris_t* new_sweeping_cached_tris(topo_stl3d* mesh, topo_stl3wfr_t* exact_mesh, const double* start,
                                               const double* end, double resolution, bool allow_rotation) noexcept;

/* Null-safe. */
QV_API void delete_cached_tris(cached_tris_t* tris) noexcept;
}

#endif
