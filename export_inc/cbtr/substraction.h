#ifndef QUVRA_CBTR_SUBSTRACTION_H
#define QUVRA_CBTR_SUBSTRACTION_H

/* Machining steps on a stock: a tool volume taken away (substract) or put
   back (add), in place, and the result of one step: whether it changed the
   stock, and the contact polygons between tool and stock.

   want_contours: trace the contact polygons where the stock changes.
   touch_counts:  a tool surface exactly on the stock's surface counts as a
                  change; otherwise it leaves the stock as it was.
   grid_width:    the finest cell the step makes, in model units; 0 takes the
                  tree's own. A finer step refines the stock for good where
                  it cuts. A negative or non-finite width gives an untouched
                  result of resolution 0.

   A step on a tree must not overlap another step on the same tree; the
   display may read the tree meanwhile. Results hold only polygons and stay
   valid after the tree is deleted. C++ hosts only, as the tool volumes. */

#include <stdint.h>

#include "cbtr/cached_tris.h"
#include "cbtr/cube_tree.h"
#include "cbtr/stick_convex.h"
#include "quvra_export.h"

namespace geom {
struct mat4d;
}
namespace disp {
class bind;
}
namespace cbtr {
class substraction_t;
class addition_t;
}  // namespace cbtr
typedef cbtr::substraction_t substraction_t;
typedef cbtr::addition_t addition_t;

extern "C" {

/* Each returns a new result owned by the caller, free with substraction__dtor
   or addition__dtor; null only when memory runs out. A null tree or tool
   gives an untouched result without contours. The stl3d forms convert the
   soup on a grid of a thousandth of the cell width, for this call only, and
   give an untouched result as well for a corner coordinate that is NaN,
   infinite or beyond 1e6 in magnitude, or a width below 1000 * 2^-48. */
QV_API substraction_t* cube_tree__substract_by_cached_tris(cube_tree_t* tree, const cached_tris_t* tool,
                                                           double grid_width, bool want_contours,
                                                           bool touch_counts) noexcept;
QV_API substraction_t* cube_tree__substract_by_stl3d(cube_tree_t* tree, const stl3d_t* tool, double grid_width,
                                                     bool want_contours, bool touch_counts) noexcept;
QV_API addition_t* cube_tree__add_by_cached_tris(cube_tree_t* tree, const cached_tris_t* tool, double grid_width,
                                                 bool want_contours, bool touch_counts) noexcept;
QV_API addition_t* cube_tree__add_by_stl3d(cube_tree_t* tree, const stl3d_t* tool, double grid_width,
                                           bool want_contours, bool touch_counts) noexcept;

/* Takes a stick convex tool away at one placement (matrix places the
   tool's z axis; entries within 1e-7 of 0, 1 or -1 snap to them), without
   triangles: the first cut of a path, before any sweep exists. Subtraction
   only. A null tree, tool or matrix, or an empty segment list, gives an
   untouched result of resolution 0. */
QV_API substraction_t* cube_tree__substract_by_init_stick_convex(cube_tree_t* tree, const stick_convex_t* stick,
                                                                 const geom::mat4d* matrix, double grid_width,
                                                                 bool want_contours, bool touch_counts) noexcept;

/* Whether the step changed the stock. */
QV_API bool substraction__IsTouched(const substraction_t* s) noexcept;
QV_API bool addition__IsTouched(const addition_t* a) noexcept;

/* Bytes that substraction__GetContactContours writes: 4 + for each polygon
   4 + 24 per point; at least 4. */
QV_API int32_t substraction__GetContactContoursBufSize(const substraction_t* s) noexcept;
QV_API int32_t addition__GetContactContoursBufSize(const addition_t* a) noexcept;

/* Writes a 32-bit polygon count, then for each polygon a 32-bit point count
   and its points as three doubles (x, y, z), without padding, little endian. */
QV_API void substraction__GetContactContours(const substraction_t* s, void* buffer) noexcept;
QV_API void addition__GetContactContours(const addition_t* a, void* buffer) noexcept;

/* The area of the contact polygons, summed over their ear triangles. */
QV_API double substraction__GetContactContourArea(const substraction_t* s) noexcept;
QV_API double addition__GetContactContourArea(const addition_t* a) noexcept;

/* Grows box (six doubles: min xyz, max xyz) by every contour point. */
QV_API void substraction_GetExpandToBox3d(substraction_t* s, double* box) noexcept;
QV_API void addition_GetExpandToBox3d(addition_t* a, double* box) noexcept;

/* Draws the contact polygons, each closed, as lines in b's colour; nothing
   for a result without contours, or a null result or bind. Needs a GL
   context locked. The drawing is made at the first call and kept with the
   result. */
QV_API void substraction_Render(substraction_t* s, disp::bind* b) noexcept;
QV_API void addition_Render(addition_t* a, disp::bind* b) noexcept;

/* Null-safe. */
QV_API void substraction__dtor(substraction_t* s) noexcept;
QV_API void addition__dtor(addition_t* a) noexcept;
}

#endif
