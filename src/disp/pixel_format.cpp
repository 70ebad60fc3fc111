#include "disp/pixel_format.h"

#include <cstdint>

namespace disp {

std::optional<pixel_format_t> choose_pixel_format(EGLDisplay display, EGLint surface_type) {
  // Largest first, as a window-system format negotiation would: the first
  // size that any configuration reaches wins.
  static constexpr EGLint sizes[] = {64, 32, 16};
  for (const EGLint bits : sizes) {
    const EGLint attribs[] = {EGL_RENDERABLE_TYPE,
                              EGL_OPENGL_BIT,
                              EGL_SURFACE_TYPE,
                              surface_type,
                              EGL_COLOR_BUFFER_TYPE,
                              EGL_RGB_BUFFER,
                              EGL_BUFFER_SIZE,
                              bits,
                              EGL_ALPHA_SIZE,
                              1,
                              EGL_DEPTH_SIZE,
                              bits,
                              EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (!eglChooseConfig(display, attribs, &config, 1, &count) || count < 1) continue;
    EGLint depth_bits = 0;
    eglGetConfigAttrib(display, config, EGL_DEPTH_SIZE, &depth_bits);
    return pixel_format_t{config, depth_bits};
  }
  return std::nullopt;
}

double depth_max_for_bits(int depth_bits) {
  // The shift is a signed 32-bit one and the subtraction is done in double,
  // so 32 bits give a negative value rather than wrapping to a huge one.
  const auto shifted = static_cast<std::int32_t>(std::uint32_t{1} << ((depth_bits - 1) & 31));
  const double value = static_cast<double>(shifted) - 1.0;
  return value < 0.0 ? default_depth_max : value;
}

}  // namespace disp
