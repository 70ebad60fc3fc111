#pragma once

// A stock from a closed triangle soup of doubles:
//   1. fraction_resolution   the grid on which corners become fractions,
//                            a thousandth of the smallest feature
//   2. dedupe                a triangle listed again (from any corner) once
//   3. records               exact triangles with their precomputed data, in
//                            parallel chunks
//   4. cells                 the cell tree from the root down
// A stop request ends the build with an empty stock; progress goes to the
// monitor step by step.

#include <cstddef>
#include <memory>
#include <vector>

#include "cbtr/build/tri_extension_t.h"
#include "cbtr/inspect/defect_record_t.h"
#include "cbtr/model/cube_tree_t.h"
#include "common/progress_monitor_t.h"
#include "geom/stl3d_t.h"

struct stop_token;

namespace cbtr {

struct build_counts_t {
  std::size_t kept = 0;
  std::size_t duplicates = 0;
  std::size_t zero_area = 0;  // triangles without area once on the grid
  std::size_t defects = 0;    // cells that could not be classified cleanly
};

// The grid step of the exact corners for a soup and a cell width w.
double fraction_resolution(const std::vector<geom::stl_tri_t>& tris, double w);

// The triangles that remain once repeats are dropped: a triangle is the same
// whichever corner it is listed from, but not when reversed.
std::vector<geom::stl_tri_t> without_duplicates(const std::vector<geom::stl_tri_t>& tris);

// Exact records of the triangles on the grid, in their order; triangles
// without area on the grid are left out. Counts every 10,000th record on
// the monitor, if there is one.
std::vector<tri_extension_t> exact_records(const std::vector<geom::stl_tri_t>& tris, double resolution,
                                           const stop_token* stop, common::progress_monitor_t* monitor);

// With defects given, the cells that could not be classified are handed to
// it once the tree is complete, in order of discovery. The records point
// into triangles that die with the call: the sink reads them in take().
struct defect_sink_t {
  virtual void take(const std::vector<defect_record_t>& records) = 0;

 protected:
  ~defect_sink_t() = default;
};

std::unique_ptr<cube_tree_t> build_cube_tree(const geom::stl3d_t& soup, double grid_width, const stop_token* stop,
                                             common::progress_monitor_t* monitor, build_counts_t* counts = nullptr,
                                             defect_sink_t* defects = nullptr);

}  // namespace cbtr
