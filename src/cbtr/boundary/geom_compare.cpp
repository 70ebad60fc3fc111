// NOLINTBEGIN(bugprone-reserved-identifier): the family__verb names are the boundary's fixed
// contract.
#include "cbtr/geom_compare.h"

#include <cmath>
#include <new>

#include "cbtr/compare/run_compare.h"
#include "common/forwarding_monitor_t.h"

extern "C" {

int32_t geom_compare(cube_tree_t* tree, const stl3d_t* design, double max_distance, double resolution,
                     geom_compare_func fn, void* ctx, progress_monitor_t* monitor) noexcept {
  if (!tree || !fn || !(max_distance > 0) || !std::isfinite(max_distance) || !(resolution >= 0) ||
      !std::isfinite(resolution))
    return GEOM_COMPARE_INVALID_ARGUMENTS;
  if (!design) return GEOM_COMPARE_OK;
  try {
    cbtr::run_compare(*tree, *design,
                      {max_distance, resolution, fn, ctx, monitor, cbtr::compare_workers()});
    return GEOM_COMPARE_OK;
  } catch (const std::bad_alloc&) {
    return GEOM_COMPARE_OUT_OF_MEMORY;
  }
}

int32_t geom_compare_with_report_progress_func(cube_tree_t* tree, const stl3d_t* design, double max_distance,
                                               double resolution, geom_compare_func fn, void* ctx,
                                               report_progress progress) noexcept {
  common::forwarding_monitor_t monitor(progress);
  return geom_compare(tree, design, max_distance, resolution, fn, ctx, progress ? &monitor : nullptr);
}

void cube_node__get_box(const cube_node_t* node, double* box) noexcept {
  if (!node || !box) return;
  const std::array<double, 6> b = cbtr::cell_box(*node);
  std::copy(b.begin(), b.end(), box);
}
}
// NOLINTEND(bugprone-reserved-identifier)
