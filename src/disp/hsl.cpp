#include "disp/hsl.h"

#include <algorithm>
#include <cmath>

namespace disp {

namespace {

double hue_channel(double p, double q, double t) {
  t -= std::floor(t);
  if (t < 1.0 / 6) return p + (q - p) * 6 * t;
  if (t < 0.5) return q;
  if (t < 2.0 / 3) return p + (q - p) * (2.0 / 3 - t) * 6;
  return p;
}

}  // namespace

hsl_t to_hsl(const rgb_t& c) {
  const double r = c[0], g = c[1], b = c[2];
  const double hi = std::max({r, g, b}), lo = std::min({r, g, b});
  const double l = (hi + lo) / 2;
  if (hi == lo) return {0, 0, l};
  const double d = hi - lo;
  const double s = l > 0.5 ? d / (2 - hi - lo) : d / (hi + lo);
  double h = 0;
  if (hi == r)
    h = (g - b) / d + (g < b ? 6 : 0);
  else if (hi == g)
    h = (b - r) / d + 2;
  else
    h = (r - g) / d + 4;
  return {h / 6, s, l};
}

rgb_t to_rgb(const hsl_t& c) {
  if (c.s == 0) return {static_cast<float>(c.l), static_cast<float>(c.l), static_cast<float>(c.l)};
  const double q = c.l < 0.5 ? c.l * (1 + c.s) : c.l + c.s - c.l * c.s;
  const double p = 2 * c.l - q;
  return {static_cast<float>(hue_channel(p, q, c.h + 1.0 / 3)), static_cast<float>(hue_channel(p, q, c.h)),
          static_cast<float>(hue_channel(p, q, c.h - 1.0 / 3))};
}

rgb_t more_saturated(const rgb_t& c, double add) {
  hsl_t hsl = to_hsl(c);
  if (hsl.s == 0) return c;
  hsl.s = std::min(1.0, hsl.s + add);
  return to_rgb(hsl);
}

}  // namespace disp
