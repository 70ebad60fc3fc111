#include "disp/display_edged.h"

namespace disp {

void display_edged(bind* b, IDisplayee& edges, IDisplayee& faces) {
  static constexpr double black[3] = {0, 0, 0};
  b->push_load_color(black);
  edges.display(b);
  b->pop_color();
  faces.display(b);
}

}  // namespace disp
