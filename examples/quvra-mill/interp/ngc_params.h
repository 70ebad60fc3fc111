#pragma once

// Numbered parameters with a fixed meaning to the machine. They hold
// millimetres in machine coordinates whatever the program's units, so the
// host can preset them without knowing the program.

namespace mill {

// G54 (system 1) to G59 (system 6); axis 0, 1, 2 for X, Y, Z.
constexpr int work_offset_param(int system, int axis) { return 5221 + 20 * (system - 1) + axis; }

// The positions G28 and G30 return to.
constexpr int g28_home_param(int axis) { return 5161 + axis; }
constexpr int g30_home_param(int axis) { return 5181 + axis; }

}  // namespace mill
