#pragma once

// The render state that a frame carries through all drawing code: the model
// matrix stack over fixed view and projection matrices, the products that
// drawings upload (computed lazily, once per stack change), the current
// colour and id, and the saved line widths and point sizes.
//
// Notation: poses are geom::mat4d, a * b applies a first. "top" is the top of
// the model stack; mv = top * view, mvs = mv * scale (pixels from the panel's
// centre, z in depth units), mvp = top * view * proj with proj = scale *
// to_clip.
//
// A bind lives on one thread inside one frame, with a context locked: the
// line width and point size stacks talk to GL directly.

#include <array>
#include <cstdint>
#include <vector>

#include "geom/mat4d.h"

namespace disp {

class bind {
 public:
  using mat4d = geom::mat4d;
  using mat4f = std::array<float, 16>;

  // The stack starts with model as its one element. Sets points of 4 pixels
  // and lines of 2 pixels, saving the driver's values first.
  bind(const mat4d& model, const mat4d& view, const mat4d& scale, const mat4d& to_clip, std::int32_t flags,
       std::int32_t width, std::int32_t height);

  // The model stack. Reading or changing the top of an empty stack throws
  // std::out_of_range; popping an empty stack does nothing.
  void push();
  void pop();
  void load(const mat4d& m);
  const mat4d& top() const;
  void reset();                       // one identity, not the constructor's model
  void push_product(const mat4d& m);  // new top = m * top
  void scale_top(double s);
  void translate_top(double x, double y, double z);

  const mat4d& mv();
  const mat4d& mvs();
  const mat4d& mvp();
  const mat4f& mv_f();
  const mat4f& mvp_f();
  double mv_scale();  // cube root of the volume scale of mv

  // How a sphere lies against the view box: 0 outside, 1 crossing, 2 wholly
  // inside. Both comparisons are strict.
  int box_relation(const double centre[3], double radius);

  double proj_depth() const { return -2.0 / to_clip.m[10]; }  // the depth range

  void push_color();
  void push_load_color(const double rgb[3]);
  void pop_color();
  void push_line_width();
  void push_load_line_width(double w);
  void pop_line_width();
  void push_point_size();
  void push_load_point_size(double s);
  void pop_point_size();

  // Pixel modes push a matrix under which one unit is one pixel; pop leaves
  // them. pixel: orientation of the current space kept; covering: screen
  // aligned at the panel's centre, in front of everything; no rotation: at
  // the current origin, facing the viewer.
  void push_pixel_mode();
  void push_covering_pixel_mode();
  void push_no_rotation_pixel_mode();

  const mat4d view, scale, to_clip, proj, view_proj;
  const std::int32_t width, height;
  const double pixel_size;  // 2 / height
  const std::int32_t flags;
  std::array<float, 3> color = {1, 1, 1};
  std::int32_t picking_id = 0;
  float specular_rate = 0;
  const double vs_reciprocal;  // a length of this in model space is one pixel
  double view_half_x = 0, view_half_y = 0, view_half_z = 0;

 private:
  void _changed() { ++_version; }
  void _sync_caches();

  std::uint32_t _version = 0;
  std::vector<mat4d> _model_stack;
  std::uint32_t _cached_version = UINT32_MAX;
  // A NaN first element marks a cache not yet computed for _cached_version.
  mat4d _mvp{}, _mvs{}, _mv{};
  mat4f _mv_f{}, _mvp_f{};
  double _mv_scale = 0;
  std::vector<std::array<float, 3>> _color_stack;
  std::vector<float> _point_size_stack;
  std::vector<float> _line_width_stack;
};

}  // namespace disp
