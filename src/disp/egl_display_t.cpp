#include "disp/egl_display_t.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <cstdio>
#include <cstring>
#include <mutex>

#include "common/check.h"
#include "common/log_sink.h"

namespace disp {

namespace {

bool has_extension(const char* list, const char* name) {
  if (!list) return false;
  const std::size_t len = std::strlen(name);
  for (const char* p = std::strstr(list, name); p; p = std::strstr(p + len, name)) {
    const bool starts = p == list || p[-1] == ' ';
    const bool ends = p[len] == '\0' || p[len] == ' ';
    if (starts && ends) return true;
  }
  return false;
}

// Initialises candidate and keeps it if it offers desktop GL.
bool accept(EGLDisplay candidate, const char* platform, egl_display_t& out) {
  if (candidate == EGL_NO_DISPLAY) return false;
  EGLint major = 0, minor = 0;
  if (!eglInitialize(candidate, &major, &minor)) return false;
  if (!has_extension(eglQueryString(candidate, EGL_CLIENT_APIS), "OpenGL")) {
    eglTerminate(candidate);
    return false;
  }
  out.display = candidate;
  out.platform = platform;
  out.surfaceless = has_extension(eglQueryString(candidate, EGL_EXTENSIONS), "EGL_KHR_surfaceless_context");
  return true;
}

EGLDisplay first_device_display(PFNEGLGETPLATFORMDISPLAYEXTPROC get_platform_display) {
  auto query_devices = reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
  EGLDeviceEXT device = nullptr;
  EGLint count = 0;
  if (!query_devices || !query_devices(1, &device, &count) || count < 1) return EGL_NO_DISPLAY;
  return get_platform_display(EGL_PLATFORM_DEVICE_EXT, device, nullptr);
}

egl_display_t open_display() {
  egl_display_t out;
  const char* client = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
  auto get_platform_display =
      reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
  if (get_platform_display && has_extension(client, "EGL_MESA_platform_surfaceless") &&
      accept(get_platform_display(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr), "surfaceless", out))
    return out;
  if (get_platform_display && has_extension(client, "EGL_EXT_platform_device") &&
      accept(first_device_display(get_platform_display), "device", out))
    return out;
  accept(eglGetDisplay(EGL_DEFAULT_DISPLAY), "default", out);
  return out;
}

const egl_display_t& opened_display() {
  static const egl_display_t display = open_display();
  return display;
}

const char* egl_error_name(EGLint code) {
  switch (code) {
    case EGL_SUCCESS:
      return "EGL_SUCCESS";
    case EGL_NOT_INITIALIZED:
      return "EGL_NOT_INITIALIZED";
    case EGL_BAD_ACCESS:
      return "EGL_BAD_ACCESS";
    case EGL_BAD_ALLOC:
      return "EGL_BAD_ALLOC";
    case EGL_BAD_ATTRIBUTE:
      return "EGL_BAD_ATTRIBUTE";
    case EGL_BAD_CONFIG:
      return "EGL_BAD_CONFIG";
    case EGL_BAD_CONTEXT:
      return "EGL_BAD_CONTEXT";
    case EGL_BAD_CURRENT_SURFACE:
      return "EGL_BAD_CURRENT_SURFACE";
    case EGL_BAD_DISPLAY:
      return "EGL_BAD_DISPLAY";
    case EGL_BAD_MATCH:
      return "EGL_BAD_MATCH";
    case EGL_BAD_NATIVE_PIXMAP:
      return "EGL_BAD_NATIVE_PIXMAP";
    case EGL_BAD_NATIVE_WINDOW:
      return "EGL_BAD_NATIVE_WINDOW";
    case EGL_BAD_PARAMETER:
      return "EGL_BAD_PARAMETER";
    case EGL_BAD_SURFACE:
      return "EGL_BAD_SURFACE";
    case EGL_CONTEXT_LOST:
      return "EGL_CONTEXT_LOST";
    default:
      return "unknown EGL error";
  }
}

}  // namespace

std::string last_egl_error_text() {
  const EGLint code = eglGetError();
  char hex[16];
  std::snprintf(hex, sizeof hex, "0x%04X", static_cast<unsigned>(code));
  return std::string(egl_error_name(code)) + " (" + hex + ")";
}

std::string egl_unavailable_reason() {
  if (opened_display().display != EGL_NO_DISPLAY) return {};
  return "no EGL display offering desktop OpenGL (tried the surfaceless, device and default "
         "platforms); install Mesa's EGL (libegl-mesa0, libgl1-mesa-dri) or a vendor driver";
}

const egl_display_t& egl_display() {
  const egl_display_t& display = opened_display();
  QV_CHECK(display.display != EGL_NO_DISPLAY, egl_unavailable_reason());
  static std::once_flag logged;
  std::call_once(logged, [&] {
    common::log_line("EGL display: platform=" + display.platform +
                     " vendor=" + eglQueryString(display.display, EGL_VENDOR) +
                     " version=" + eglQueryString(display.display, EGL_VERSION));
  });
  return display;
}

}  // namespace disp
