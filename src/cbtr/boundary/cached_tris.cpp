// NOLINTBEGIN(bugprone-reserved-identifier): the family__verb names are the boundary's fixed
// contract.
#include "cbtr/cached_tris.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <initializer_list>

#include "cbtr/tool/cached_tris_t.h"
#include "cbtr/tool/convex_sweep.h"
#include "cbtr/tool/linear_sweep.h"
#include "cbtr/tool/stationary_tris.h"
#include "cbtr/tool/sweep_chooser.h"
#include "common/new_nothrow.h"
#include "geom/box3d.h"
#include "geom/coordinate_limit.h"

namespace {

// A pose crossing the boundary: null, NaN, infinities and entries beyond the
// coordinate limit are refused here, so that no builder meets a vertex it
// cannot snap.
bool read_pose(const double* src, geom::mat4d& pose) {
  if (!src) return false;
  std::memcpy(pose.m.data(), src, sizeof pose.m);
  return geom::pose_within_limit(pose);
}

bool valid_resolution(double resolution) { return geom::resolution_within_limit(resolution); }

// The floating tool's points at every pose they are snapped at lie within
// the coordinate limit.
bool placed_within_limit(topo_stl3d& mesh, std::initializer_list<const geom::mat4d*> poses) {
  for (const geom::mat4d* pose : poses) {
    geom::box3d box;
    mesh.expand_to_box3d(&box, pose);
    if (!box.is_empty() && !std::all_of(box.v.begin(), box.v.end(), geom::coordinate_within_limit)) return false;
  }
  return true;
}

template <class Build>
cached_tris_t* make(Build&& build) noexcept {
  try {
    return common::new_nothrow<cbtr::cached_tris_t>(build());
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace

extern "C" {

cached_tris_t* new_stationary_cached_tris(topo_stl3d* mesh, const double* mat, double resolution) noexcept {
  geom::mat4d pose{};
  if (!mesh || !read_pose(mat, pose) || !valid_resolution(resolution) || !placed_within_limit(*mesh, {&pose}))
    return nullptr;
  return make([&] { return cbtr::build_stationary(*mesh, pose, resolution); });
}

cached_tris_t* new_linear_sweeping_cached_tris(topo_stl3wfr_t* exact_mesh, const double* start, const double* end,
                                               double resolution) noexcept {
  geom::mat4d s{}, e{};
  if (!exact_mesh || !read_pose(start, s) || !read_pose(end, e) || !valid_resolution(resolution)) return nullptr;
  return make([&] {
    return cbtr::build_linear_sweep(*exact_mesh, cbtr::to_exact_pose(s, resolution),
                                    cbtr::to_exact_pose(e, resolution));
  });
}

cached_tris_t* new_nonlinear_sweeping_cached_tris(topo_stl3d* mesh, const double* start, const double* end,
                                                  double resolution) noexcept {
  geom::mat4d s{}, e{};
  if (!mesh || !read_pose(start, s) || !read_pose(end, e) || !valid_resolution(resolution) ||
      !placed_within_limit(*mesh, {&s, &e}))
    return nullptr;
  return make([&] { return cbtr::build_convex_sweep(*mesh, s, e, resolution); });
}

cached_tris_t* new_sweeping_cached_tris(topo_stl3d* mesh, topo_stl3wfr_t* exact_mesh, const double* start,
                                        const double* end, double resolution, bool allow_rotation) noexcept {
  geom::mat4d s{}, e{};
  if (!mesh || !exact_mesh || !read_pose(start, s) || !read_pose(end, e) || !valid_resolution(resolution) ||
      !placed_within_limit(*mesh, {&s, &e}))
    return nullptr;
  return make([&] { return cbtr::build_sweeping(*mesh, *exact_mesh, s, e, resolution, allow_rotation); });
}

void delete_cached_tris(cached_tris_t* tris) noexcept { delete tris; }
}
// NOLINTEND(bugprone-reserved-identifier)
