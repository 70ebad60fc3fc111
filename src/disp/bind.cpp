#include "disp/bind.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "disp/gl.h"
#include "disp/pose_math.h"

namespace disp {

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

bind::mat4f to_float(const geom::mat4d& m) {
  bind::mat4f f;
  std::transform(m.m.begin(), m.m.end(), f.begin(), [](double v) { return static_cast<float>(v); });
  return f;
}

float gl_float(GLenum name) {
  GLfloat value = 0;
  glGetFloatv(name, &value);
  return value;
}

// Sets the last saved value again and forgets it; nothing when none is saved.
void restore_gl_float(std::vector<float>& saved, void(GLAD_API_PTR* set)(GLfloat)) {
  if (saved.empty()) return;
  set(saved.back());
  saved.pop_back();
}

}  // namespace

bind::bind(const mat4d& model, const mat4d& view_, const mat4d& scale_, const mat4d& to_clip_, std::int32_t flags_,
           std::int32_t width_, std::int32_t height_)
    : view(view_),
      scale(scale_),
      to_clip(to_clip_),
      proj(scale_ * to_clip_),
      view_proj(view_ * (scale_ * to_clip_)),
      width(width_),
      height(height_),
      pixel_size(2.0 / height_),
      flags(flags_),
      vs_reciprocal(1.0 / std::cbrt(det3(view_ * scale_))),
      _model_stack{model} {
  // The view box: the clip cube taken back through proj.
  const mat4d back = inverse(proj);
  geom::vec3d lo{INFINITY, INFINITY, INFINITY}, hi{-INFINITY, -INFINITY, -INFINITY};
  for (int corner = 0; corner < 8; ++corner) {
    const geom::vec3d p =
        apply_projective(back, {corner & 1 ? 1.0 : -1.0, corner & 2 ? 1.0 : -1.0, corner & 4 ? 1.0 : -1.0});
    lo = {std::min(lo.x, p.x), std::min(lo.y, p.y), std::min(lo.z, p.z)};
    hi = {std::max(hi.x, p.x), std::max(hi.y, p.y), std::max(hi.z, p.z)};
  }
  view_half_x = (hi.x - lo.x) / 2;
  view_half_y = (hi.y - lo.y) / 2;
  view_half_z = (hi.z - lo.z) / 2;

  // Every frame starts from the same widths; nothing restores the driver's
  // at the end, since the next frame sets them again.
  push_color();
  push_load_point_size(4.0);
  push_load_line_width(2.0);
}

void bind::push() {
  _model_stack.push_back(top());
  _changed();
}

void bind::pop() {
  if (_model_stack.empty()) return;
  _model_stack.pop_back();
  _changed();
}

const bind::mat4d& bind::top() const {
  if (_model_stack.empty()) throw std::out_of_range("invalid vector subscript");
  return _model_stack.back();
}

void bind::load(const mat4d& m) {
  top();
  _model_stack.back() = m;
  _changed();
}

void bind::reset() {
  _model_stack.assign(1, mat4d::identity());
  _changed();
}

void bind::push_product(const mat4d& m) {
  push();
  _model_stack.back() = m * _model_stack.back();
}

void bind::scale_top(double s) { load(uniform_scale(s) * top()); }

void bind::translate_top(double x, double y, double z) { load(translation(x, y, z) * top()); }

void bind::_sync_caches() {
  if (_cached_version == _version) return;
  _cached_version = _version;
  _mv.m[0] = _mvs.m[0] = _mvp.m[0] = nan;
  _mv_f[0] = _mvp_f[0] = static_cast<float>(nan);
  _mv_scale = nan;
}

const bind::mat4d& bind::mv() {
  _sync_caches();
  if (std::isnan(_mv.m[0])) _mv = top() * view;
  return _mv;
}

const bind::mat4d& bind::mvs() {
  _sync_caches();
  if (std::isnan(_mvs.m[0])) _mvs = mv() * scale;
  return _mvs;
}

const bind::mat4d& bind::mvp() {
  _sync_caches();
  if (std::isnan(_mvp.m[0])) _mvp = top() * view_proj;
  return _mvp;
}

const bind::mat4f& bind::mv_f() {
  _sync_caches();
  if (std::isnan(_mv_f[0])) _mv_f = to_float(mv());
  return _mv_f;
}

const bind::mat4f& bind::mvp_f() {
  _sync_caches();
  if (std::isnan(_mvp_f[0])) _mvp_f = to_float(mvp());
  return _mvp_f;
}

double bind::mv_scale() {
  _sync_caches();
  if (std::isnan(_mv_scale)) _mv_scale = std::cbrt(det3(mv()));
  return _mv_scale;
}

int bind::box_relation(const double centre[3], double radius) {
  const geom::vec3d c = mv().apply({centre[0], centre[1], centre[2]});
  const double r = mv_scale() * radius;
  const double dist[3] = {std::fabs(c.x), std::fabs(c.y), std::fabs(c.z)};
  const double half[3] = {view_half_x, view_half_y, view_half_z};
  for (int i = 0; i < 3; ++i)
    if (dist[i] > half[i] + r) return 0;
  for (int i = 0; i < 3; ++i)
    if (!(dist[i] < half[i] - r)) return 1;
  return 2;
}

void bind::push_color() { _color_stack.push_back(color); }

void bind::push_load_color(const double rgb[3]) {
  push_color();
  color = {static_cast<float>(rgb[0]), static_cast<float>(rgb[1]), static_cast<float>(rgb[2])};
}

void bind::pop_color() {
  if (_color_stack.empty()) return;
  color = _color_stack.back();
  _color_stack.pop_back();
}

void bind::push_line_width() { _line_width_stack.push_back(gl_float(GL_LINE_WIDTH)); }

void bind::push_load_line_width(double w) {
  push_line_width();
  glLineWidth(static_cast<GLfloat>(w));
}

void bind::pop_line_width() { restore_gl_float(_line_width_stack, glad_glLineWidth); }

void bind::push_point_size() { _point_size_stack.push_back(gl_float(GL_POINT_SIZE)); }

void bind::push_load_point_size(double s) {
  push_point_size();
  glPointSize(static_cast<GLfloat>(s));
}

void bind::pop_point_size() { restore_gl_float(_point_size_stack, glad_glPointSize); }

void bind::push_pixel_mode() {
  push();
  scale_top(vs_reciprocal);
}

void bind::push_covering_pixel_mode() {
  const double depth_front = (proj_depth() - 1.0) / 2.0;
  push();
  load(translation(0, 0, depth_front) * uniform_scale(1.0 / std::cbrt(det3(scale))) * inverse(view));
}

void bind::push_no_rotation_pixel_mode() {
  // Only the current origin's place in view space survives: its rotation and
  // scale are dropped, so a label there faces the viewer at pixel size.
  const mat4d& here = mv();
  const mat4d at_origin = translation(here.m[12], here.m[13], here.m[14]) * inverse(view);
  push();
  load(uniform_scale(vs_reciprocal) * at_origin);
}

}  // namespace disp
