#ifndef QUVRA_CBTR_COLLISION_H
#define QUVRA_CBTR_COLLISION_H

/* Collision of rigid bodies: a triangle soup sorted into a fixed-grid octree
   (the same lattice as the stock's), tested against another such tree or
   against a stock, with one relative pose. All in double precision.

   A pose is sixteen doubles that move a point of B into A's frame:
     x' = m[0]x + m[4]y + m[8]z + m[12], and so on, translation in 12..14.

   Flags:
     0  collision: a triangle of each body touch or cross (touching within
        rounding, 1e-9 of the coordinates, counts);
     1  nearer than the clearance, or too near for the grid to tell: the
        finest cells are about 2 to 1/16 model units, so bodies closer than
        a few units get 1 unless they touch;
     2  farther apart than the clearance everywhere;
     4  stock only: the stock is one uniform cell (all air or all solid)
        within reach, which holds no surface to test (a uniform cell deeper
        down is passed over: the other cells decide);
    -1  invalid arguments (a null tree or pose, a NaN clearance).
   Only surfaces meet: a body wholly inside another, not crossing its
   surface, does not collide. Geometry outside the lattice's cube (+-65536)
   is compared with wrong boxes. */

#include <stddef.h>
#include <stdint.h>

#include "quvra_export.h"

#ifdef __cplusplus
namespace cbtr {
class cube_tree_t;
struct tri_tree_t;
}  // namespace cbtr
typedef cbtr::cube_tree_t cube_tree_t;
typedef cbtr::tri_tree_t tri_tree_t;
namespace geom {
struct stl3d_t;
}
typedef geom::stl3d_t stl3d_t;
#else
typedef struct cube_tree_t cube_tree_t;
typedef struct tri_tree_t tri_tree_t;
typedef struct stl3d_t stl3d_t;
#endif

/* What the separating-axis test of one triangle against boxes needs,
   worked out once. Fill it with tri_sat__init. */
typedef struct tri_sat_t {
  const double* tri; /* the record it was made from: corners a, b, c, normal */
  double box[6];     /* min x, y, z, max x, y, z */
  double normal[3];  /* (b - a) x (c - a), not normalised */
  double d;          /* normal . a; NaN when the box test alone decides the plane */
  /* Axis x_k x edge e (edges b - a, c - b, a - c) at [3k + e]: its two
     components along k+1 and k+2; NaN when a box or plane test covers it. */
  double axis[9][2];
  double range[9][2]; /* min and max of the triangle on each of those axes */
} tri_sat_t;

QV_EXTERN_C_BEGIN

/* Sorts the triangles of mesh into a new tree. The tree reads the mesh's
   records in place: the mesh must outlive the tree and must not change
   meanwhile. A record's normal is not read. Owned by the caller, free with
   tri_tree__delete. Null when mesh is null or memory runs out. */
QV_API tri_tree_t* tri_tree__new(const stl3d_t* mesh) QV_NOEXCEPT;

/* Null-safe. */
QV_API void tri_tree__delete(tri_tree_t* tree) QV_NOEXCEPT;

/* Flag of tree a against tree b placed by mat (B to A). pair_hint sizes the
   set of triangle pairs already tested; 0 is fine. Trees are only read: any
   number of queries may run at once. */
QV_API int32_t tri_tree__get_collision_flag_by_tri_tree_vs_tri_tree(const tri_tree_t* a, const tri_tree_t* b,
                                                                    const double* mat, double clearance,
                                                                    size_t pair_hint) QV_NOEXCEPT;

/* A lower bound of the distance between the bodies: -infinity when they
   collide, 0 when they are within a few model units, and beyond about 2.3
   units only a coarse bound that stops refining. NaN for a null argument. */
QV_API double tri_tree__get_at_least_distance(const tri_tree_t* a, const tri_tree_t* b, const double* mat,
                                              size_t pair_hint) QV_NOEXCEPT;

/* Flag of a stock against tree b placed by mat (B to the stock's frame).
   The stock is read under the same rules as the display: a step must not
   run on it meanwhile. An empty stock gives 2. */
QV_API int32_t get_collision_flag_by_cube_tree_and_tri_tree(const cube_tree_t* tree, const tri_tree_t* b,
                                                            const double* mat, double clearance,
                                                            size_t pair_hint) QV_NOEXCEPT;

/* Fills sat from one record of twelve doubles, which it keeps a pointer to.
   Nothing when either is null. */
QV_API void tri_sat__init(tri_sat_t* sat, const double* tri) QV_NOEXCEPT;

/* 1 when the triangle and the box (min x, y, z, max x, y, z) touch or
   overlap, else 0; 0 for a null argument. */
QV_API int32_t is_intersected(const tri_sat_t* sat, const double* box) QV_NOEXCEPT;

QV_EXTERN_C_END

#endif
