#include "disp/disp_context.h"

#include "disp/gl_debug_output.h"
#include "disp/gl_mutex.h"

namespace disp {

void disp_context::lock() {
  if (lock_depth == 0) {
    gl_mutex().lock();
    raw.make_current();
    if (!debug_output_installed) debug_output_installed = install_gl_debug_output() ? 1 : 0;
  }
  ++lock_depth;
}

void disp_context::unlock() {
  // An unlock without a lock would otherwise wrap the depth and keep the
  // context current for good.
  if (lock_depth == 0) return;
  if (--lock_depth != 0) return;
  disp_raw_context_t::release_current();
  gl_mutex().unlock();
}

}  // namespace disp
