#pragma once

// A tool volume ready for the cube tree: exact triangles, degenerate ones
// filtered out and the rest digested once into the records the cell tests
// read, so that one volume can be applied to several trees, or to many
// nodes, without repeating the work. Immutable after construction, apart
// from its two drawings, made at the first render or box request: a display
// thread may draw it while a machining thread applies it.

#include <atomic>
#include <cstddef>
#include <memory>
#include <vector>

#include "cbtr/build/tri_extension_t.h"
#include "cbtr/tool/tool_tri.h"
#include "disp/IDisplayee.h"

namespace cbtr {

class cached_tris_t final : public disp::IDisplayee {
 public:
  // Takes the triangles of a sweep builder and leaves tris empty and freed.
  // Keeps their order; drops those whose normal is exactly zero.
  explicit cached_tris_t(tool_tris_t&& tris);

  std::size_t size() const { return _tris.size(); }
  const std::vector<tri_extension_t>& tris() const { return _tris; }

  // The faces in b's colour with their triangle outlines in black.
  using disp::IDisplayee::display;
  void display(disp::bind* b) override;
  // The box of the face drawing, read back from the GPU.
  void expand_to_box3d(geom::box3d* box) override;
  void expand_to_box3d(geom::box3d* box, const geom::mat4d* mat) override;

 private:
  // The face drawing, made together with the outlines if either is missing.
  // Two threads may both make them; the later store wins.
  std::shared_ptr<disp::IDisplayee> _faces();

  std::vector<tri_extension_t> _tris;
  std::atomic<std::shared_ptr<disp::IDisplayee>> _drawing;         // faces
  std::atomic<std::shared_ptr<disp::IDisplayee>> _second_drawing;  // outlines
};

}  // namespace cbtr
