#pragma once

// Anything that can say where it is: meshes, stocks, drawings, results.
// Both operations only grow the box the caller passes.

#include "geom/box3d.h"
#include "geom/mat4d.h"

namespace geom {

class IBoxable {
 public:
  virtual void expand_to_box3d(box3d* box) = 0;
  // The box of the object moved by mat.
  virtual void expand_to_box3d(box3d* box, const mat4d* mat) = 0;

 protected:
  ~IBoxable() = default;
};

}  // namespace geom
