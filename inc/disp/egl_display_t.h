#pragma once

// The process's EGL display, from which every hidden context comes. It is
// looked up and initialised once, on first need, and kept until the process
// ends: contexts of other threads may outlive any one user of it.
//
// Platforms are tried in this order: Mesa's surfaceless platform (no window
// system, no GPU needed), the device platform (a vendor driver without a
// display server), then the default display.

#include <EGL/egl.h>

#include <string>

namespace disp {

struct egl_display_t {
  EGLDisplay display = EGL_NO_DISPLAY;
  std::string platform;      // "surfaceless", "device" or "default", for the log
  bool surfaceless = false;  // contexts can be current without any surface
};

// Empty when a display that offers desktop GL is at hand; otherwise what is
// missing, in words for a test report or a support engineer. Never aborts.
std::string egl_unavailable_reason();

// The display. A process without one cannot have contexts, which is fatal.
const egl_display_t& egl_display();

// The calling thread's last EGL error as "EGL_BAD_MATCH (0x3009)".
std::string last_egl_error_text();

}  // namespace disp
