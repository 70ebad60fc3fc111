#pragma once

// How a surface with feature lines is drawn: the lines first, in black, so
// that the faces drawn after them in the current colour do not hide them.

#include "disp/IDisplayee.h"

namespace disp {

void display_edged(bind* b, IDisplayee& edges, IDisplayee& faces);

}  // namespace disp
