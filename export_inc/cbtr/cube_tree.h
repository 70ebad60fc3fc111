#ifndef QUVRA_CBTR_CUBE_TREE_H
#define QUVRA_CBTR_CUBE_TREE_H

/* The stock: a cube tree over a fixed lattice, built from a closed triangle
   soup, cut and added to by tool volumes, saved to and read from files. */

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#include "common/progress_monitor.h"
#include "common/stop.h"
#include "quvra_export.h"

#ifdef __cplusplus
namespace cbtr {
class cube_tree_t;
}
typedef cbtr::cube_tree_t cube_tree_t;
namespace geom {
struct stl3d_t;
}
typedef geom::stl3d_t stl3d_t;
namespace disp {
class bind;
}
typedef disp::bind cube_tree_bind_t;
#else
typedef struct cube_tree_t cube_tree_t;
typedef struct stl3d_t stl3d_t;
/* The display's render state (disp/render_state.h), opaque to C. */
typedef struct cube_tree_bind_t cube_tree_bind_t;
#endif

QV_EXTERN_C_BEGIN

/* Called on the building thread at every step and count of a build; the
   monitor is valid during the call only (read it with progress_monitor__*). */
typedef void (*report_progress)(const progress_monitor_t* monitor);

/* Builds a stock from a closed triangle soup (only read during the call),
   with cells no wider than grid_width model units. Owned by the caller, free
   with cube_tree__delete. A stop requested on stop (may be null) ends the
   build with an empty stock. progress may be null. Null when stl is null,
   grid_width is not a positive number, a corner coordinate is NaN, infinite
   or beyond 1e6 in magnitude, or memory runs out. Cells that could
   not be classified (open or self-overlapping soups) are counted in the log
   line "cube tree: N cells could not be classified". */
QV_API cube_tree_t* cube_tree__new(const stl3d_t* stl, double grid_width, const stop_token* stop,
                                   report_progress progress) QV_NOEXCEPT;

/* Receives one surface triangle: corners a, b, c, then the normal as far as
   it was computed (NaN otherwise). Valid during the call only. */
typedef void (*cube_tree_tri_fn)(const double tri[12]);

/* Calls fn once per triangle of the stock's surface, with cells of about
   width model units: a cell at that size shows its own summary of the finer
   cells below; 0 lists the finest cells. Does nothing for a null tree or
   function. */
QV_API void cube_tree__get_tris(const cube_tree_t* tree, double width, cube_tree_tri_fn fn) QV_NOEXCEPT;

/* A coloured surface triangle, 120 bytes. */
typedef struct rgb_tri {
  double rgb[3];    /* the cell's colour; white where none is set */
  double normal[3]; /* unit normal */
  double a[3], b[3], c[3];
} rgb_tri;

typedef void (*cube_tree_rgb_tris_fn)(const rgb_tri* tris, size_t count);

/* Calls fn once with every triangle of the surface at cells of about width
   (as cube_tree__get_tris), also when there are none. The array is valid
   during the call only. Does nothing for a null tree or function. */
QV_API void cube_tree__get_rgb_tris(const cube_tree_t* tree, double width, cube_tree_rgb_tris_fn fn) QV_NOEXCEPT;

/* Empties every piece of solid that a cut has separated from the main body
   (the piece with the most cells; cells sharing a solid corner are one
   piece). A step: it must not overlap another step on the tree. */
QV_API void cube_tree__remove_fly_piece(cube_tree_t* tree) QV_NOEXCEPT;

/* Whether a cell holds a tip that went infinite in a computation. */
QV_API bool cube_tree__contains_inf_edge_cuts(const cube_tree_t* tree) QV_NOEXCEPT;

/* Called once per cell with infinite tips: the cell's box (min xyz, max xyz)
   and its edge numbers, ascending; both valid during the call only. */
typedef void (*cube_tree_inf_edge_fn)(const double box[6], const uint32_t* edges, size_t count);
QV_API void cube_tree__get_inf_edge_cuts_info(const cube_tree_t* tree, cube_tree_inf_edge_fn fn) QV_NOEXCEPT;

/* A cell that could not be classified while building: an open or
   self-overlapping soup makes them. */
typedef struct defect_cell_info {
  double box[6]; /* min x, y, z, max x, y, z */
  int32_t depth;
} defect_cell_info;

/* One meeting of a triangle of that cell with one of its edges, 136 bytes. */
typedef struct defect_tip_info {
  double a[3], b[3], c[3]; /* the triangle's corners */
  double normal[3];        /* its unit normal */
  uint32_t edge;           /* the cell's edge number */
  uint32_t reserved0;
  uint32_t flags; /* how the edge's line meets the triangle: 0x001 inside, 0x002 << k its
                     edge k, 0x010 << k its corner k, 0x100 in its plane (t0..t1), 0x200 across it */
  uint32_t reserved1;
  double t0;       /* where, on the edge's axis */
  double t1;       /* NaN unless the line lies in the triangle's plane */
  uint32_t t1_low; /* the low word of the stored t1 when the line crosses the plane; else 0 */
  uint32_t reserved2;
} defect_tip_info;

typedef void (*defect_info_fn)(const defect_cell_info* cell, int depth, const defect_tip_info* tips, size_t count);

/* cube_tree__new, and then fn once per cell that could not be classified,
   in order of discovery, before returning. A null fn builds as
   cube_tree__new does. */
QV_API cube_tree_t* cube_tree__new_with_defect_infos(const stl3d_t* stl, double grid_width, const stop_token* stop,
                                                     report_progress progress, defect_info_fn fn) QV_NOEXCEPT;

/* Null-safe. */
QV_API void cube_tree__delete(cube_tree_t* tree) QV_NOEXCEPT;

/* Edge length of the tree's finest cells in model units: 2^(17 - r) for
   resolution r, 131072 for a tree whose resolution is not set; 0 for null. */
QV_API double cube_tree__get_grid_width(const cube_tree_t* tree) QV_NOEXCEPT;

/* Results of cube_tree__write_to. */
enum {
  CUBE_TREE_WRITE_OK = 0,
  CUBE_TREE_WRITE_FAILED = 1,           /* the file could not be opened or written */
  CUBE_TREE_WRITE_INVALID_ARGUMENTS = 2 /* null tree or null path */
};

/* Saves tree to the file at path (UTF-8), created or truncated: a binary
   depth-first dump that cube_tree__new_by_file reads back. The tree is only
   read. An empty tree (one without cells) writes its resolution alone, which
   reads back as a tree whose root cell is unset and holds no surface. After
   CUBE_TREE_WRITE_FAILED the file may hold part of the dump. */
QV_API int32_t cube_tree__write_to(const cube_tree_t* tree, const char* path) QV_NOEXCEPT;

/* Reads a tree from the file at path (UTF-8). Owned by the caller, free with
   cube_tree__delete. A file of the resolution alone reads as an empty stock.
   Every record is checked against the format: a file that ends early, has
   bytes after its last record, a resolution beyond 26, an unknown kind, a
   corner word that does not fit its kind or its children, a cell deeper than
   the resolution allows or a tip off its edge gives null and a log line that
   says what and where. Null as well when path is null, names a directory,
   the file can't be opened, or memory runs out. Cells of a tree read this
   way have no attachments. */
QV_API cube_tree_t* cube_tree__new_by_file(const char* path) QV_NOEXCEPT;

/* Lets go of the cached triangles and drawings of tree's cells and raises
   the drawing epoch; other trees keep theirs. Null is ignored. */
QV_API void cube_tree__free_disp_cache(cube_tree_t* tree) QV_NOEXCEPT;

/* Grows box (six doubles: minimum x, y, z, then maximum x, y, z) by the
   extent of tree's solid cells; an empty tree adds nothing. Nothing happens
   when either pointer is null. */
QV_API void cube_tree__ExpandToBox3d(cube_tree_t* tree, double* box) QV_NOEXCEPT;

/* The same with tree's box moved by mat (sixteen doubles, translation in
   elements 12 to 14): its eight corners are moved, then box grows by them.
   Nothing happens when any pointer is null. */
QV_API void cube_tree__ExpandToBox3dByMat(cube_tree_t* tree, double* box, const double* mat) QV_NOEXCEPT;

/* Draws tree moved by mat (applied before the current top of b's stack), at
   the depth of cells that the view affords: a far view draws a few coarse
   cells, a near one the fine cells in view, and detail grows only after ten
   frames of this thread asked for it, so that it does not flicker. Cell
   drawings live in the process-wide drawing cache (cbtr/cbtr_cache.h).
   Needs a GL context locked; another thread may cut tree meanwhile. Nothing
   happens when any pointer is null. */
QV_API void cube_tree__RenderByMat(cube_tree_t* tree, cube_tree_bind_t* b, const double* mat) QV_NOEXCEPT;

QV_EXTERN_C_END

#endif
