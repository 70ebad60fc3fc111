#pragma once

// An axis cross of a fixed size on screen, marking a frame of the scene. It
// is drawn in the current colour made more saturated, so that it stands out
// from the body it marks. The axis letters and the name are not drawn yet:
// they wait for text drawing.
//
// The lines and tips are one pair of drawings shared by all living crosses:
// the first cross builds them, the last one destroyed frees them.

#include <cstdint>

#include "disp/IDisplayee.h"

namespace disp {

class CoordinateDrawing final : public IDisplayee {
 public:
  // size: the axis length in pixels.
  explicit CoordinateDrawing(double size);
  ~CoordinateDrawing() override;
  CoordinateDrawing(const CoordinateDrawing&) = delete;
  CoordinateDrawing& operator=(const CoordinateDrawing&) = delete;

  using IDisplayee::display;
  void display(bind* b) override;
  // The origin: the cross's extent in model units depends on the view.
  void expand_to_box3d(geom::box3d* box) override;
  void expand_to_box3d(geom::box3d* box, const geom::mat4d* mat) override;

  // How many times the shared drawings have been built.
  static std::uint64_t shared_builds();

  const double size;
};

}  // namespace disp
