// NOLINTBEGIN(bugprone-reserved-identifier): the family__verb names are the boundary's fixed
// contract.
#include "cbtr/collision.h"

#include <cmath>
#include <limits>
#include <new>

#include "cbtr/collision/collision_queries.h"
#include "cbtr/collision/tri_sat.h"

namespace {

constexpr int32_t invalid_flag = -1;

const geom::mat4d& pose(const double* mat) { return *reinterpret_cast<const geom::mat4d*>(mat); }

}  // namespace

extern "C" {

tri_tree_t* tri_tree__new(const stl3d_t* mesh) noexcept {
  if (!mesh) return nullptr;
  try {
    return new cbtr::tri_tree_t(*mesh);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void tri_tree__delete(tri_tree_t* tree) noexcept { delete tree; }

int32_t tri_tree__get_collision_flag_by_tri_tree_vs_tri_tree(const tri_tree_t* a, const tri_tree_t* b,
                                                             const double* mat, double clearance,
                                                             size_t pair_hint) noexcept {
  if (!a || !b || !mat || std::isnan(clearance)) return invalid_flag;
  try {
    return cbtr::collision_flag(*a, *b, pose(mat), clearance, pair_hint);
  } catch (const std::bad_alloc&) {
    return invalid_flag;
  }
}

double tri_tree__get_at_least_distance(const tri_tree_t* a, const tri_tree_t* b, const double* mat,
                                       size_t pair_hint) noexcept {
  if (!a || !b || !mat) return std::numeric_limits<double>::quiet_NaN();
  try {
    return cbtr::at_least_distance(*a, *b, pose(mat), pair_hint);
  } catch (const std::bad_alloc&) {
    return std::numeric_limits<double>::quiet_NaN();
  }
}

int32_t get_collision_flag_by_cube_tree_and_tri_tree(const cube_tree_t* tree, const tri_tree_t* b,
                                                     const double* mat, double clearance,
                                                     size_t pair_hint) noexcept {
  if (!tree || !b || !mat || std::isnan(clearance)) return invalid_flag;
  try {
    return cbtr::collision_flag(*tree, *b, pose(mat), clearance, pair_hint);
  } catch (const std::bad_alloc&) {
    return invalid_flag;
  }
}

void tri_sat__init(tri_sat_t* sat, const double* tri) noexcept {
  if (sat && tri) *sat = cbtr::make_tri_sat(tri);
}

int32_t is_intersected(const tri_sat_t* sat, const double* box) noexcept {
  if (!sat || !box) return 0;
  cbtr::box6_t b;
  for (int k = 0; k < 6; ++k) b[k] = box[k];
  return cbtr::touches_box(*sat, b) ? 1 : 0;
}
}
// NOLINTEND(bugprone-reserved-identifier)
