#ifndef QUVRA_GEOM_TOPO_STL3D_H
#define QUVRA_GEOM_TOPO_STL3D_H

/* The welded floating mesh: a triangle soup made into shared points, lines
   and triangles, with normals computed from the vertices. It is what the
   display draws for a mesh. C++ hosts only (paths are std::string). */

#include <stdint.h>

#include <string>

#include "geom/stl3d.h"
#include "quvra_export.h"

namespace geom {
template <class T>
class topo_stl3;
struct mat4d;
}  // namespace geom
namespace disp {
class bind;
}
typedef geom::topo_stl3<double> topo_stl3d;

extern "C" {

/* Welds soup (only read during the call), with round_cos 0.8. Owned by the
   caller, free with topo_stl3d__delete. Null when soup is null or memory
   runs out. */
QV_API topo_stl3d* topo_stl3d__new_by_stl3d(const stl3d_t* soup) noexcept;

/* Reads an STL file as stl3d__new_by_file does (with its warning when the
   read fails) and welds what was read. Owned by the caller. */
QV_API topo_stl3d* topo_stl3d__new_by_filepath(const std::string& path) noexcept;

/* Welds count records of twelve doubles (vertices, then a normal that is not
   used). Owned by the caller. Null for a negative count or null records with
   a positive count. */
QV_API topo_stl3d* topo_stl3d__ctor(int32_t count, const double* tris) noexcept;

/* Both null-safe; one function under two names. */
QV_API void topo_stl3d__delete(topo_stl3d* mesh) noexcept;
QV_API void topo_stl3d__dtor(topo_stl3d* mesh) noexcept;

/* Triangles kept after dropping degenerate and repeated ones; 0 for null. */
QV_API int32_t topo_stl3d__count(const topo_stl3d* mesh) noexcept;

/* Writes topo_stl3d__count records of twelve doubles into out: corners, then
   the unit normal. The order is the mesh's, not the source's. */
QV_API void topo_stl3d__get_tris(topo_stl3d* mesh, double* out) noexcept;

/* Faces meeting at an angle whose cosine is above round_cos are shaded
   smoothly. Setting it does not rebuild drawings already made. */
QV_API double topo_stl3d__get_round_cos(const topo_stl3d* mesh) noexcept;
QV_API void topo_stl3d__set_round_cos(topo_stl3d* mesh, double round_cos) noexcept;

/* Grows box (six doubles: min xyz, max xyz) by the mesh, or by the mesh
   moved by mat. */
QV_API void topo_stl3d__expand_to_box3d(topo_stl3d* mesh, double* box) noexcept;
QV_API void topo_stl3d__expand_to_box3d_by_mat(topo_stl3d* mesh, double* box, const geom::mat4d* mat) noexcept;

/* Draws the mesh: its feature lines (borders, and creases sharper than
   round_cos) in black, then its faces in b's colour, smoothly shaded. The
   drawings are made at the first render and kept: round_cos set later has
   no visible effect. Needs a GL context locked; null draws nothing. */
QV_API void topo_stl3d__render(topo_stl3d* mesh, disp::bind* b) noexcept;
/* The same moved by mat (applied before the current top of b's stack). */
QV_API void topo_stl3d__render_by_mat(topo_stl3d* mesh, disp::bind* b, const geom::mat4d* mat) noexcept;
/* The feature lines alone, in b's colour. */
QV_API void topo_stl3d__render_edges(topo_stl3d* mesh, disp::bind* b) noexcept;
}

#endif
