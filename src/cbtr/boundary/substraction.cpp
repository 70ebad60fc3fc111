#include "cbtr/substraction.h"

#include <cmath>
#include <new>

#include "cbtr/build/build_cube_tree.h"
#include "cbtr/model/cube_tree_t.h"
#include "cbtr/step/run_step.h"
#include "cbtr/step/step_result_t.h"
#include "cbtr/stick_convex.h"
#include "cbtr/tool/cached_tris_t.h"
#include "common/new_nothrow.h"
#include "geom/coordinate_limit.h"
#include "geom/stl3d_t.h"

namespace {

// 0 takes the tree's own width; a negative or non-finite width names no cell.
bool usable_width(double w) { return w >= 0.0 && std::isfinite(w); }

template <class Result>
Result* untouched() {
  return common::new_nothrow<Result>(0u, false, std::vector<cbtr::contour_t>{});
}

// The outcome of step() as a result object; null when memory runs out.
template <class Result, class Step>
Result* result_of(Step step) {
  try {
    cbtr::step_outcome_t out = step();
    return new Result(out.resolution, out.touched, std::move(out.contours));
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

template <class Result>
Result* run(cube_tree_t* tree, const std::vector<cbtr::tri_extension_t>* tool, double grid_width, bool subtract,
            bool want_contours, bool touch_counts) {
  if (!tree || !tool || !usable_width(grid_width)) return untouched<Result>();
  return result_of<Result>([&] {
    return cbtr::run_step(*tree, *tool, grid_width, {subtract, want_contours, touch_counts});
  });
}

template <class Result>
Result* run_soup(cube_tree_t* tree, const stl3d_t* soup, double grid_width, bool subtract, bool want_contours,
                 bool touch_counts) {
  if (!tree || !soup || !usable_width(grid_width)) return untouched<Result>();
  const double width = grid_width == 0.0 ? tree->grid_width() : grid_width;
  if (!geom::resolution_within_limit(0.001 * width) || !geom::records_within_limit(soup->tris))
    return untouched<Result>();
  try {
    const std::vector<cbtr::tri_extension_t> tool = cbtr::exact_records(soup->tris, 0.001 * width, nullptr, nullptr);
    return run<Result>(tree, &tool, grid_width, subtract, want_contours, touch_counts);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

const std::vector<cbtr::tri_extension_t>* records_of(const cached_tris_t* tool) {
  return tool ? &tool->tris() : nullptr;
}

}  // namespace

extern "C" {

substraction_t* cube_tree__substract_by_cached_tris(cube_tree_t* tree, const cached_tris_t* tool, double grid_width,
                                                    bool want_contours, bool touch_counts) noexcept {
  return run<cbtr::substraction_t>(tree, records_of(tool), grid_width, true, want_contours, touch_counts);
}

substraction_t* cube_tree__substract_by_stl3d(cube_tree_t* tree, const stl3d_t* tool, double grid_width,
                                              bool want_contours, bool touch_counts) noexcept {
  return run_soup<cbtr::substraction_t>(tree, tool, grid_width, true, want_contours, touch_counts);
}

addition_t* cube_tree__add_by_cached_tris(cube_tree_t* tree, const cached_tris_t* tool, double grid_width,
                                          bool want_contours, bool touch_counts) noexcept {
  return run<cbtr::addition_t>(tree, records_of(tool), grid_width, false, want_contours, touch_counts);
}

addition_t* cube_tree__add_by_stl3d(cube_tree_t* tree, const stl3d_t* tool, double grid_width, bool want_contours,
                                    bool touch_counts) noexcept {
  return run_soup<cbtr::addition_t>(tree, tool, grid_width, false, want_contours, touch_counts);
}

substraction_t* cube_tree__substract_by_init_stick_convex(cube_tree_t* tree, const stick_convex_t* stick,
                                                          const geom::mat4d* matrix, double grid_width,
                                                          bool want_contours, bool touch_counts) noexcept {
  if (!tree || !stick || !matrix || !usable_width(grid_width)) return untouched<cbtr::substraction_t>();
  return result_of<cbtr::substraction_t>([&] {
    const cbtr::stick_tool_t tool(*stick, *matrix);
    return cbtr::run_stick_step(*tree, tool, grid_width, want_contours, touch_counts);
  });
}

bool substraction__IsTouched(const substraction_t* s) noexcept { return s && s->touched(); }
bool addition__IsTouched(const addition_t* a) noexcept { return a && a->touched(); }

int32_t substraction__GetContactContoursBufSize(const substraction_t* s) noexcept {
  return s ? static_cast<int32_t>(s->contours_buffer_size()) : 4;
}
int32_t addition__GetContactContoursBufSize(const addition_t* a) noexcept {
  return a ? static_cast<int32_t>(a->contours_buffer_size()) : 4;
}

void substraction__GetContactContours(const substraction_t* s, void* buffer) noexcept {
  if (s && buffer) s->write_contours(buffer);
}
void addition__GetContactContours(const addition_t* a, void* buffer) noexcept {
  if (a && buffer) a->write_contours(buffer);
}

double substraction__GetContactContourArea(const substraction_t* s) noexcept { return s ? s->contour_area() : 0; }
double addition__GetContactContourArea(const addition_t* a) noexcept { return a ? a->contour_area() : 0; }

void substraction_GetExpandToBox3d(substraction_t* s, double* box) noexcept {
  if (s && box) s->expand_to_box3d(reinterpret_cast<geom::box3d*>(box));
}
void addition_GetExpandToBox3d(addition_t* a, double* box) noexcept {
  if (a && box) a->expand_to_box3d(reinterpret_cast<geom::box3d*>(box));
}

void substraction_Render(substraction_t* s, disp::bind* b) noexcept {
  if (s && b) s->display(b);
}
void addition_Render(addition_t* a, disp::bind* b) noexcept {
  if (a && b) a->display(b);
}

void substraction__dtor(substraction_t* s) noexcept { delete s; }
void addition__dtor(addition_t* a) noexcept { delete a; }
}
