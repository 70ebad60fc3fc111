#pragma once

// Choosing the configuration of a hidden context, and the depth range that
// its depth bits give the display engine's window matrix.

#include <EGL/egl.h>

#include <optional>

namespace disp {

struct pixel_format_t {
  EGLConfig config = nullptr;
  int depth_bits = 0;
};

// The first configuration that offers desktop GL on the given surface types
// with RGBA colour and an alpha bit, trying colour and depth sizes of 64, 32
// and 16 bits in turn (each "at least"). Empty when none fits.
std::optional<pixel_format_t> choose_pixel_format(EGLDisplay display, EGLint surface_type);

// Largest depth value that depth_bits can express: (1 << (bits - 1)) - 1 in
// signed 32-bit arithmetic with the shift count masked to five bits. A
// negative result, as for 32 bits, gives the fallback 40000.
double depth_max_for_bits(int depth_bits);

// The depth range a context reports before its format is known.
inline constexpr double default_depth_max = 40000.0;

}  // namespace disp
