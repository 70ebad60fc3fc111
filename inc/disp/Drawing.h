#pragma once

// A displayable vertex drawing: mode is the GL primitive, T the component
// type, Rail the layout's alias template, Usage the buffer usage hint.
// Construction and destruction take a torch, so a drawing can be made and
// dropped on a thread with no context of its own; both flush, so that the
// buffer's data reaches the share group before another context draws it.

#include <cstddef>
#include <memory>
#include <mutex>

#include "disp/IDisplayee.h"
#include "disp/disp_torch.h"
#include "disp/drawing_mutex.h"
#include "disp/drawing_t.h"

namespace disp {

template <GLenum Mode, class T, template <class> class Rail, GLenum Usage = GL_STATIC_DRAW>
class Drawing final : public IDisplayee {
 public:
  using rail_type = Rail<T>;

  // count components of T, as drawing_t::upload takes them.
  Drawing(const T* data, std::size_t count) : _drawing(std::make_shared<drawing_t<rail_type>>()) {
    const disp_torch torch;
    _drawing->upload(data, count, Usage);
    flush();
  }
  ~Drawing() override {
    const disp_torch torch;
    _drawing.reset();
    flush();
  }
  Drawing(const Drawing&) = delete;
  Drawing& operator=(const Drawing&) = delete;

  std::uint64_t vertex_count() const { return _drawing->vertex_count; }

  using IDisplayee::display;
  void display(bind* b) override { _drawing->display(*b, Mode); }

  // The box is read back from the buffer once, under a torch, by whichever
  // thread asks first.
  void expand_to_box3d(geom::box3d* box) override { box->expand(own_box()); }
  void expand_to_box3d(geom::box3d* box, const geom::mat4d* mat) override { box->expand(moved_box(own_box(), *mat)); }

 private:
  static void flush() {
    const std::lock_guard lock(drawing_mutex());
    glFlush();
  }

  const geom::box3d& own_box() {
    std::call_once(_box_once, [this] {
      const disp_torch torch;
      _box = std::make_unique<geom::box3d>(_drawing->box());
    });
    return *_box;
  }

  std::shared_ptr<drawing_t<rail_type>> _drawing;
  std::unique_ptr<geom::box3d> _box;
  std::once_flag _box_once;
};

// The instances in use.
using line_drawing_t = Drawing<GL_LINES, double, rail_v>;
using lit_tri_drawing_t = Drawing<GL_TRIANGLES, double, rail_nv>;
using float_line_drawing_t = Drawing<GL_LINES, float, rail_v>;
using float_point_drawing_t = Drawing<GL_POINTS, float, rail_v>;

}  // namespace disp
