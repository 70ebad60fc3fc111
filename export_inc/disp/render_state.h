#ifndef QUVRA_DISP_RENDER_STATE_H
#define QUVRA_DISP_RENDER_STATE_H

/* The render state `bind` that every display operation receives: a model
   matrix stack over fixed view and projection matrices, the current colour,
   and saved line widths and point sizes. The display engine builds one per
   frame; a host with its own render loop builds one with bind__new.

   Matrices are sixteen doubles as in geom/mat4d: a point maps as
   x' = m[0]x + m[4]y + m[8]z + m[12] (and so on), and "a * b" applies a
   first. mv = top * view, mvs = mv * scale (pixels from the panel's centre),
   mvp = top * view * scale * to_clip.

   A bind belongs to one thread inside one frame and is used with a GL
   context locked. All calls ignore a null bind (and return 0 where they
   return a value); a null output pointer is not written. The type keeps its
   namespace: a global name `bind` would collide with the socket call. C++
   hosts only. */

#include <stdint.h>

#include "quvra_export.h"

namespace geom {
struct mat4d;
}
namespace disp {
class bind;
}

extern "C" {

/* New state with model as the one element of its stack; sets GL points of 4
   pixels and lines of 2 pixels. Call with a GL context locked. Owned by the
   caller, free with bind__delete. Null when a matrix is null or memory runs
   out. */
QV_API disp::bind* bind__new(const geom::mat4d* model, const geom::mat4d* view, const geom::mat4d* scale,
                             const geom::mat4d* to_clip, int32_t flags, int32_t width, int32_t height) noexcept;

/* Null-safe. GL state is not restored. */
QV_API void bind__delete(disp::bind* b) noexcept;

/* The model stack. push duplicates the top, pop removes it (nothing on an
   empty stack), load replaces it, lastc copies it out, reset leaves one
   identity. push, load and lastc on a stack popped empty end the process. */
QV_API void mat_stack__push(disp::bind* b) noexcept;
QV_API void mat_stack__pop(disp::bind* b) noexcept;
QV_API void mat_stack__load(disp::bind* b, const geom::mat4d* m) noexcept;
QV_API void mat_stack__lastc(disp::bind* b, geom::mat4d* out) noexcept;
QV_API void mat_stack__reset(disp::bind* b) noexcept;

/* Copies of the products of the current top. */
QV_API void bind__mv_mat4d(disp::bind* b, geom::mat4d* out) noexcept;
QV_API void bind__mvp_mat4d(disp::bind* b, geom::mat4d* out) noexcept;
QV_API void bind__mvs_mat4d(disp::bind* b, geom::mat4d* out) noexcept;

/* Cube root of the volume scale of mv. */
QV_API double bind__getMvScale(disp::bind* b) noexcept;

/* How the sphere at centre (model space) with radius lies against the view
   box: 0 outside, 1 crossing its border, 2 wholly inside. centre is three
   doubles. */
QV_API int32_t bind__getMvpBoxRelation(disp::bind* b, const double* centre, double radius) noexcept;

/* The depth range, -2 / to_clip[10]: the depth_max that init_disp gave. */
QV_API double bind__get_proj_depth(disp::bind* b) noexcept;

/* A length that is one pixel in the space of view * scale. */
QV_API double bind__reciprocal_vs_scale(disp::bind* b) noexcept;

/* The colour stack. push_load sets three doubles, narrowed to float; pop
   restores exactly the floats saved. */
QV_API void bind__push_color(disp::bind* b) noexcept;
QV_API void bind__push_load_color(disp::bind* b, const double* rgb) noexcept;
QV_API void bind__pop_color(disp::bind* b) noexcept;

/* GL line width and point size, saved as the driver reports them. */
QV_API void bind__push_line_width(disp::bind* b) noexcept;
QV_API void bind__push_load_line_width(disp::bind* b, double width) noexcept;
QV_API void bind__pop_line_width(disp::bind* b) noexcept;
QV_API void bind__push_point_size(disp::bind* b) noexcept;
QV_API void bind__push_load_point_size(disp::bind* b, double size) noexcept;
QV_API void bind__pop_point_size(disp::bind* b) noexcept;

/* Push a matrix under which one unit is one pixel; mat_stack__pop leaves.
   pixel_mode keeps the orientation of the current space; covering_pixel_mode
   is screen aligned with its origin at the panel's centre, in front of
   everything (logos, overlays); no_rotation_pixel_mode keeps the current
   origin's place on screen and faces the viewer (labels). */
QV_API void bind__push_pixel_mode(disp::bind* b) noexcept;
QV_API void bind__push_covering_pixel_mode(disp::bind* b) noexcept;
QV_API void bind__push_no_rotation_pixel_mode(disp::bind* b) noexcept;
}

#endif
