#pragma once

// Angles about the tool axis, kept in [-pi, pi).

#include <cmath>
#include <numbers>

namespace mech {

inline double wrap_angle(double a) {
  constexpr double two_pi = 2 * std::numbers::pi;
  const double w = a - two_pi * std::floor((a + std::numbers::pi) / two_pi);
  return w >= std::numbers::pi ? w - two_pi : w;
}

// atan2 of the point's x and y, with +pi taken as -pi.
inline double polar_angle(double x, double y) { return wrap_angle(std::atan2(y, x)); }

}  // namespace mech
