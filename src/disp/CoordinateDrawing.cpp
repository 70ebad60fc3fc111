#include "disp/CoordinateDrawing.h"

#include <memory>
#include <mutex>

#include "disp/Drawing.h"
#include "disp/hsl.h"

namespace disp {

namespace {

constexpr double saturation_boost = 0.4;

struct shared_cross_t {
  std::mutex mutex;
  std::uint64_t living = 0;
  std::uint64_t builds = 0;
  std::unique_ptr<float_line_drawing_t> lines;
  std::unique_ptr<float_point_drawing_t> tips;
};

shared_cross_t& shared() {
  static shared_cross_t cross;
  return cross;
}

}  // namespace

CoordinateDrawing::CoordinateDrawing(double size_px) : size(size_px) {
  shared_cross_t& s = shared();
  const std::lock_guard lock(s.mutex);
  if (s.living++ > 0) return;
  static constexpr float lines[18] = {0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 1};
  static constexpr float tips[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
  s.lines = std::make_unique<float_line_drawing_t>(lines, 18);
  s.tips = std::make_unique<float_point_drawing_t>(tips, 9);
  ++s.builds;
}

CoordinateDrawing::~CoordinateDrawing() {
  shared_cross_t& s = shared();
  const std::lock_guard lock(s.mutex);
  if (--s.living > 0) return;
  s.lines.reset();
  s.tips.reset();
}

std::uint64_t CoordinateDrawing::shared_builds() {
  const std::lock_guard lock(shared().mutex);
  return shared().builds;
}

void CoordinateDrawing::display(bind* b) {
  shared_cross_t& s = shared();
  const rgb_t c = more_saturated(b->color, saturation_boost);
  const double rgb[3] = {c[0], c[1], c[2]};
  b->push_load_color(rgb);
  b->push();
  b->scale_top(b->vs_reciprocal * size);
  b->push_load_point_size(4.0);
  s.tips->display(b);
  b->pop_point_size();
  b->push_load_line_width(2.0);
  s.lines->display(b);
  b->pop_line_width();
  b->pop();
  b->pop_color();
}

void CoordinateDrawing::expand_to_box3d(geom::box3d* box) { box->expand(geom::vec3d{0, 0, 0}); }

void CoordinateDrawing::expand_to_box3d(geom::box3d* box, const geom::mat4d* mat) {
  box->expand(mat->apply(geom::vec3d{0, 0, 0}));
}

}  // namespace disp
