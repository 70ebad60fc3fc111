#ifndef QUVRA_CBTR_GEOM_COMPARE_H
#define QUVRA_CBTR_GEOM_COMPARE_H

/* The compare of a machined stock with its design part: every surface cell
   of the stock gets the signed distance from its surface to the nearest
   triangle of the design, handed to a host function that colours it.

   Sign: positive where the stock's surface lies outside the design (material
   left over, excess), negative inside it (cut too deep, a gouge). The design
   must be closed and its triangles counter-clockwise seen from outside.
   A cell whose nearest design point lies inside a triangle takes the side
   of that triangle's plane; nearest to an edge shared by two triangles, the
   side of the wedge they form; nearest to a corner, the side of the plane
   the cell lies farthest from. Where no rule applies (an edge or corner
   that belongs to one triangle alone) the distance is NaN.

   Exactness: design corners and each cell's sample point (the one of the
   cell's surface points nearest their mean) are snapped to the stock's lattice, 1/1024 model
   units, and the nearest triangles and the side are then decided exactly.

   C++ hosts only: the host function receives the cell as a shared pointer. */

#include <stdint.h>

#include <memory>

#include "cbtr/cube_tree.h"
#include "common/progress_monitor.h"
#include "quvra_export.h"

namespace cbtr {
struct cube_node_t;
}
typedef cbtr::cube_node_t cube_node_t;

/* Called once for every leaf cell of the stock, from worker threads and
   concurrently: it must be safe for that. distance is in model units, NaN
   when the cell's sample point lies farther than max_distance from the
   design, within resolution of it, or on no rule's side. node is valid
   during the call; keep a copy of the pointer to keep the cell. */
typedef void (*geom_compare_func)(std::shared_ptr<cube_node_t>& node, double distance, void* ctx);

/* Results of geom_compare. */
enum {
  GEOM_COMPARE_OK = 0,
  GEOM_COMPARE_INVALID_ARGUMENTS = 2, /* null tree or fn, max_distance not positive and finite,
                                         resolution negative or not finite */
  GEOM_COMPARE_OUT_OF_MEMORY = 3      /* some cells may have been handed to fn already */
};

extern "C" {

/* Compares tree with the design soup (only read during the call). The
   stock's surface cells are first split down to the tree's resolution,
   which stays after the call; the shape does not change. This is a step:
   it must not overlap another step on the tree, while the display may read
   it. A null design or an empty tree completes without a call of fn.
   The work runs in max(1, hardware threads) tasks at once. monitor (may be
   null) receives, in order: "build triangles.", "build searching-tree.",
   "mesh", each without a count, then "geom compare" with the number of
   leaf cells, whose count rises as cells are done (set from the worker
   threads) and ends at that number. */
QV_API int32_t geom_compare(cube_tree_t* tree, const stl3d_t* design, double max_distance, double resolution,
                            geom_compare_func fn, void* ctx, progress_monitor_t* monitor) noexcept;

/* The same, with progress (may be null) called at every change of the
   monitor, with the monitor, valid during the call only. It runs on the
   calling thread for the messages and on worker threads for the counts,
   possibly on two at once. */
QV_API int32_t geom_compare_with_report_progress_func(cube_tree_t* tree, const stl3d_t* design,
                                                      double max_distance, double resolution, geom_compare_func fn,
                                                      void* ctx, report_progress progress) noexcept;

/* The cell's box: min x, y, z, then max x, y, z, exact. Nothing when either
   pointer is null. */
QV_API void cube_node__get_box(const cube_node_t* node, double* box) noexcept;
}

#endif
