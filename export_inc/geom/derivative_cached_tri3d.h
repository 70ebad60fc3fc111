#ifndef QUVRA_GEOM_DERIVATIVE_CACHED_TRI3D_H
#define QUVRA_GEOM_DERIVATIVE_CACHED_TRI3D_H

/* A mesh moved to a target frame in doubles, each triangle with what a fast
   contact test derives from it computed once: the floating counterpart of
   the exact tool volumes, with no grid. C++ hosts only. */

#include <stddef.h>

#include <vector>

#include "geom/topo_stl3d.h"
#include "quvra_export.h"

namespace geom {

struct Stl3d;

/* 45 doubles. Half extents are per component: |p0 - m0|, |p1 - m1|,
   |p2 - m2|. */
struct derivative_cached_tri3d_t {
  double p0[3], p1[3], p2[3]; /* corners in the target frame */
  double normal[3];           /* unit normal in the target frame */
  double box_min[3], box_max[3];
  double e0[3], e1[3], e2[3]; /* p1 - p0, p2 - p1, p0 - p2 */
  double m0[3], m1[3], m2[3]; /* mid-points of the edges e0, e1, e2 */
  double h0[3], h1[3], h2[3]; /* half extents of the edges */
};

}  // namespace geom

typedef std::vector<geom::derivative_cached_tri3d_t> derivative_cached_tri3d_vector;

extern "C" {

/* One record per triangle of soup, in its order, moved by mat (sixteen
   doubles, column-major). The normal is the soup triangle's own unit
   normal, computed from its corners and stored in the soup when it is
   still NaN, then turned by the rotation part of mat without being
   normalised again; a triangle without area keeps a NaN normal. The soup is
   written only in that cache: do not build two vectors from one soup at
   once. Owned by the caller, free with
   derivative_cached_tri3d__delete_vector. Null for a null soup or matrix,
   or when memory runs out; an empty soup gives an empty vector. */
QV_API derivative_cached_tri3d_vector* derivative_cached_tri3d__new_vector_by_Stl3d(geom::Stl3d* soup,
                                                                                    const double* mat) noexcept;

/* The same for a welded mesh, which is only read: the normal is the unit
   of the moved corners' cross product. unused is not read. */
QV_API derivative_cached_tri3d_vector* derivative_cached_tri3d__new_vector_by_topo_stl3d(topo_stl3d* mesh,
                                                                                         size_t unused,
                                                                                         const double* mat) noexcept;

/* Null-safe. */
QV_API void derivative_cached_tri3d__delete_vector(derivative_cached_tri3d_vector* v) noexcept;
}

#endif
