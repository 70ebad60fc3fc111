// The window-system layer of the display: hidden contexts from EGL. Everything
// above it sees only disp_raw_context_t, disp_context and the GL mutex.

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <mutex>
#include <string>
#include <unordered_set>

#include "common/check.h"
#include "common/log_sink.h"
#include "disp/disp_raw_context_t.h"
#include "disp/egl_display_t.h"
#include "disp/gl_mutex.h"
#include "disp/pixel_format.h"

namespace disp {

namespace {

// Every living raw context; guarded by the GL mutex. A new context shares
// with any member, since all members are in one share group.
std::unordered_set<const disp_raw_context_t*>& live_set() {
  static auto* set = new std::unordered_set<const disp_raw_context_t*>;
  return *set;
}

EGLDisplay display() { return egl_display().display; }

}  // namespace

disp_raw_context_t::disp_raw_context_t()
    : disp_raw_context_t(egl_display().surfaceless ? surface_kind::none : surface_kind::pbuffer) {}

disp_raw_context_t::disp_raw_context_t(surface_kind kind) : depth_max(default_depth_max) {
  const EGLint surface_type = kind == surface_kind::pbuffer ? EGL_PBUFFER_BIT : 0;
  const std::optional<pixel_format_t> format = choose_pixel_format(display(), surface_type);
  QV_CHECK(format, "initClass eglChooseConfig failed: " + last_egl_error_text());
  depth_max = depth_max_for_bits(format->depth_bits);

  if (kind == surface_kind::pbuffer) {
    const EGLint size[] = {EGL_WIDTH, 1, EGL_HEIGHT, 1, EGL_NONE};
    surface = eglCreatePbufferSurface(display(), format->config, size);
    QV_CHECK(surface != EGL_NO_SURFACE, "initClass eglCreatePbufferSurface failed: " + last_egl_error_text());
  }

  // The API choice is per thread and also decides which context a later
  // eglMakeCurrent on this thread replaces.
  QV_CHECK(eglBindAPI(EGL_OPENGL_API), "eglBindAPI(EGL_OPENGL_API) failed: " + last_egl_error_text());
  const EGLint attribs[] = {EGL_CONTEXT_MAJOR_VERSION,
                            3,
                            EGL_CONTEXT_MINOR_VERSION,
                            3,
                            EGL_CONTEXT_OPENGL_PROFILE_MASK,
                            EGL_CONTEXT_OPENGL_COMPATIBILITY_PROFILE_BIT,
                            EGL_NONE};
  std::lock_guard lock(gl_mutex());
  auto& live = live_set();
  const EGLContext share = live.empty() ? EGL_NO_CONTEXT : (*live.begin())->context;
  context = eglCreateContext(display(), format->config, share, attribs);
  QV_CHECK(context != EGL_NO_CONTEXT, "initClass eglCreateContext failed: " + last_egl_error_text());
  live.insert(this);
}

disp_raw_context_t::~disp_raw_context_t() {
  {
    std::lock_guard lock(gl_mutex());
    live_set().erase(this);
  }
  if (context == EGL_NO_CONTEXT) return;
  // A context still current on this thread is destroyed by EGL once it is
  // released; the caller releases before it deletes.
  eglDestroyContext(display(), context);
  if (surface != EGL_NO_SURFACE) eglDestroySurface(display(), surface);
  context = EGL_NO_CONTEXT;
  surface = EGL_NO_SURFACE;
  depth_max = 0.0;
}

void disp_raw_context_t::make_current() const {
  eglBindAPI(EGL_OPENGL_API);
  if (!eglMakeCurrent(display(), surface, surface, context))
    common::log_line("eglMakeCurrent failed: " + last_egl_error_text() +
                     "; nothing will be drawn by this thread until the next lock");
}

void disp_raw_context_t::release_current() {
  eglBindAPI(EGL_OPENGL_API);
  eglMakeCurrent(display(), EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
}

int disp_raw_context_t::swap() const {
  if (surface == EGL_NO_SURFACE) return 1;
  return eglSwapBuffers(display(), surface) ? 1 : 0;
}

}  // namespace disp
