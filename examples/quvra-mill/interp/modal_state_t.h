#pragma once

// The modes an NGC program sets and later blocks rely on, and where the
// machine stands. Initial values are those of a machine just switched on.

#include "interp/arc_linearizer.h"
#include "interp/move_t.h"

namespace mill {

enum class motion_mode {
  none,  // G80, and the state before any motion code
  rapid,
  linear,
  arc_cw,
  arc_ccw,
};

struct modal_state_t {
  motion_mode motion = motion_mode::none;
  plane_t plane = plane_t::xy;
  double mm_per_unit = 1.0;   // 25.4 under G20
  bool absolute = true;       // G90 / G91
  bool arc_absolute = false;  // G90.1 / G91.1
  int work_system = 1;        // 1 to 6 for G54 to G59
  double feed = 0;            // mm/min
  int next_tool = 0;          // chosen by T, loaded by M6
  int tool = 0;
  vec3_t position{};  // machine coordinates, mm
};

}  // namespace mill
