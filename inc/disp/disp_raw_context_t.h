#pragma once

// One GL context of the process's share group, with no visible surface. Every
// living raw context is in the live set, and each new one shares the objects
// of a living one, so a buffer uploaded on any thread can be drawn by any
// viewer. Framebuffer objects are not shared by GL and are made per context.

#include <EGL/egl.h>

namespace disp {

class disp_raw_context_t {
 public:
  // How the context reaches a drawable. Without one, rendering goes only to
  // framebuffer objects, which is all the display needs; a 1x1 pbuffer stands
  // in for the hidden window where the display cannot do without.
  enum class surface_kind { none, pbuffer };

  // Chooses none where the display allows surfaceless contexts. Any failure
  // to make the context ends the process with the reason.
  disp_raw_context_t();
  explicit disp_raw_context_t(surface_kind kind);
  ~disp_raw_context_t();

  disp_raw_context_t(const disp_raw_context_t&) = delete;
  disp_raw_context_t& operator=(const disp_raw_context_t&) = delete;

  // Binds the context to the calling thread, or releases whatever the thread
  // has current. The caller holds the GL mutex. A failed bind is logged, not
  // fatal: the frame draws nothing.
  void make_current() const;
  static void release_current();

  // Presents the surface's back buffer; 1 on success, and 1 when there is no
  // surface, since the visible result is read from an off-screen target.
  int swap() const;

  EGLSurface surface = EGL_NO_SURFACE;
  EGLContext context = EGL_NO_CONTEXT;  // never null in a living object
  double depth_max;
};

}  // namespace disp
