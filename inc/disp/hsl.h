#pragma once

// Hue, saturation and lightness, for colours derived from the current one.
// All components in [0, 1]; hue in turns.

#include <array>

namespace disp {

using rgb_t = std::array<float, 3>;

struct hsl_t {
  double h, s, l;
};

// A grey (equal channels) has hue and saturation 0.
hsl_t to_hsl(const rgb_t& c);
rgb_t to_rgb(const hsl_t& c);

// The same hue and lightness with saturation raised by add, up to 1; a grey
// stays grey, since it has no hue to strengthen.
rgb_t more_saturated(const rgb_t& c, double add);

}  // namespace disp
