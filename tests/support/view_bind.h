#pragma once

// Render state for a square target that looks at the cube of half size half
// around centre (model units), straight down the z axis, without
// perspective.

#include <array>
#include <memory>

#include "disp/bind.h"
#include "disp/pose_math.h"

namespace test_support {

inline std::unique_ptr<disp::bind> view_bind(const std::array<double, 3>& centre, double half, int pixels) {
  const geom::mat4d id = geom::mat4d::identity();
  return std::make_unique<disp::bind>(id, disp::translation(-centre[0], -centre[1], -centre[2]),
                                      disp::uniform_scale(1.0 / half), id, 0, pixels, pixels);
}

}  // namespace test_support
