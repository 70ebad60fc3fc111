#ifndef QUVRA_GEOM_TOPO_STL3WFR_H
#define QUVRA_GEOM_TOPO_STL3WFR_H

/* The exact mesh: a closed triangle mesh whose points are exact rationals,
   the operand of exact booleans. Doubles become fractions once, when the
   mesh is made, on a grid of the given resolution. */

#include <stdint.h>

#include "quvra_export.h"

#ifdef __cplusplus
namespace geom {
class topo_stl3wfr_t;
}
typedef geom::topo_stl3wfr_t topo_stl3wfr_t;
#else
typedef struct topo_stl3wfr_t topo_stl3wfr_t;
#endif

QV_EXTERN_C_BEGIN

/* From count records of twelve doubles (corners, then a normal that is not
   used). Each coordinate becomes the simplest fraction within resolution of
   it; triangles whose corners meet at that resolution are dropped. Owned by
   the caller, free with topo_stl3wfr__delete. Null for a negative count,
   null records with a positive count, a resolution that is not a positive
   number, or when memory runs out. */
QV_API topo_stl3wfr_t* topo_stl3wfr__new(int32_t count, const double* tris, double resolution) QV_NOEXCEPT;

/* Number of triangles; 0 for null. */
QV_API uint64_t topo_stl3wfr__tris_size(const topo_stl3wfr_t* mesh) QV_NOEXCEPT;

/* Writes topo_stl3wfr__tris_size records of twelve doubles into out:
   corners, then the unit normal (NaN for a triangle without area). A second
   call gives bit-identical values. */
QV_API void topo_stl3wfr__get_tris(topo_stl3wfr_t* mesh, double* out) QV_NOEXCEPT;

/* Grows box (six doubles: min xyz, max xyz) by every point of the mesh. */
QV_API void topo_stl3wfr__expand_to_box3d(topo_stl3wfr_t* mesh, double* box) QV_NOEXCEPT;

/* Null-safe. */
QV_API void topo_stl3wfr__delete(topo_stl3wfr_t* mesh) QV_NOEXCEPT;

QV_EXTERN_C_END

#endif
