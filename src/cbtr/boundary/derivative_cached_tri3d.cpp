// NOLINTBEGIN(bugprone-reserved-identifier): the family__verb names are the boundary's fixed
// contract.
#include "geom/derivative_cached_tri3d.h"

#include <cstring>

#include "cbtr/tool/derivative_tris.h"
#include "common/new_nothrow.h"

namespace {

geom::mat4d pose_of(const double* mat) {
  geom::mat4d pose{};
  std::memcpy(pose.m.data(), mat, sizeof pose.m);
  return pose;
}

template <class Mesh>
derivative_cached_tri3d_vector* make(Mesh& mesh, const double* mat) noexcept {
  try {
    return common::new_nothrow<derivative_cached_tri3d_vector>(cbtr::derivative_tris_of(mesh, pose_of(mat)));
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace

extern "C" {

derivative_cached_tri3d_vector* derivative_cached_tri3d__new_vector_by_Stl3d(geom::Stl3d* soup,
                                                                             const double* mat) noexcept {
  if (!soup || !soup->stl || !mat) return nullptr;
  return make(*soup->stl, mat);
}

derivative_cached_tri3d_vector* derivative_cached_tri3d__new_vector_by_topo_stl3d(topo_stl3d* mesh, size_t,
                                                                                  const double* mat) noexcept {
  if (!mesh || !mat) return nullptr;
  return make(*mesh, mat);
}

void derivative_cached_tri3d__delete_vector(derivative_cached_tri3d_vector* v) noexcept { delete v; }
}
// NOLINTEND(bugprone-reserved-identifier)
