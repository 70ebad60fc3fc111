#pragma once

// What a scene is made of: anything that draws itself into a frame's render
// state and says where it is. The display reaches every other subsystem only
// through this interface, so a host decides what a scene holds.

#include "disp/IGetDisplayee.h"
#include "disp/bind.h"
#include "geom/IBoxable.h"

namespace disp {

class IDisplayee : public IGetDisplayee, public geom::IBoxable {
 public:
  IDisplayee* get_displayee() override { return this; }
  virtual ~IDisplayee() = default;

  // Draws in the space of the top of b's model stack.
  virtual void display(bind* b) = 0;

  // Draws moved by mat: mat is applied first, then the current top.
  virtual void display(bind* b, const geom::mat4d* mat) {
    b->push_product(*mat);
    display(b);
    b->pop();
  }
};

}  // namespace disp
