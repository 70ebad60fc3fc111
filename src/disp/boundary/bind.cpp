// NOLINTBEGIN(bugprone-reserved-identifier): the family__verb names are the boundary's fixed
// contract.
#include "disp/render_state.h"

#include "common/new_nothrow.h"
#include "disp/bind.h"

using geom::mat4d;

extern "C" {

disp::bind* bind__new(const mat4d* model, const mat4d* view, const mat4d* scale, const mat4d* to_clip, int32_t flags,
                      int32_t width, int32_t height) noexcept {
  if (!model || !view || !scale || !to_clip) return nullptr;
  return common::new_nothrow<disp::bind>(*model, *view, *scale, *to_clip, flags, width, height);
}

void bind__delete(disp::bind* b) noexcept { delete b; }

void mat_stack__push(disp::bind* b) noexcept {
  if (b) b->push();
}

void mat_stack__pop(disp::bind* b) noexcept {
  if (b) b->pop();
}

void mat_stack__load(disp::bind* b, const mat4d* m) noexcept {
  if (b && m) b->load(*m);
}

void mat_stack__lastc(disp::bind* b, mat4d* out) noexcept {
  if (b && out) *out = b->top();
}

void mat_stack__reset(disp::bind* b) noexcept {
  if (b) b->reset();
}

void bind__mv_mat4d(disp::bind* b, mat4d* out) noexcept {
  if (b && out) *out = b->mv();
}

void bind__mvp_mat4d(disp::bind* b, mat4d* out) noexcept {
  if (b && out) *out = b->mvp();
}

void bind__mvs_mat4d(disp::bind* b, mat4d* out) noexcept {
  if (b && out) *out = b->mvs();
}

double bind__getMvScale(disp::bind* b) noexcept { return b ? b->mv_scale() : 0.0; }

int32_t bind__getMvpBoxRelation(disp::bind* b, const double* centre, double radius) noexcept {
  return b && centre ? b->box_relation(centre, radius) : 0;
}

double bind__get_proj_depth(disp::bind* b) noexcept { return b ? b->proj_depth() : 0.0; }

double bind__reciprocal_vs_scale(disp::bind* b) noexcept { return b ? b->vs_reciprocal : 0.0; }

void bind__push_color(disp::bind* b) noexcept {
  if (b) b->push_color();
}

void bind__push_load_color(disp::bind* b, const double* rgb) noexcept {
  if (b && rgb) b->push_load_color(rgb);
}

void bind__pop_color(disp::bind* b) noexcept {
  if (b) b->pop_color();
}

void bind__push_line_width(disp::bind* b) noexcept {
  if (b) b->push_line_width();
}

void bind__push_load_line_width(disp::bind* b, double width) noexcept {
  if (b) b->push_load_line_width(width);
}

void bind__pop_line_width(disp::bind* b) noexcept {
  if (b) b->pop_line_width();
}

void bind__push_point_size(disp::bind* b) noexcept {
  if (b) b->push_point_size();
}

void bind__push_load_point_size(disp::bind* b, double size) noexcept {
  if (b) b->push_load_point_size(size);
}

void bind__pop_point_size(disp::bind* b) noexcept {
  if (b) b->pop_point_size();
}

void bind__push_pixel_mode(disp::bind* b) noexcept {
  if (b) b->push_pixel_mode();
}

void bind__push_covering_pixel_mode(disp::bind* b) noexcept {
  if (b) b->push_covering_pixel_mode();
}

void bind__push_no_rotation_pixel_mode(disp::bind* b) noexcept {
  if (b) b->push_no_rotation_pixel_mode();
}
}
// NOLINTEND(bugprone-reserved-identifier)
