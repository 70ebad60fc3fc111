#include "disp/init_disp.h"

#include <atomic>

#include "disp/disp_torch.h"
#include "disp/font_state.h"
#include "disp/init_opengl.h"
#include "disp/programs.h"
#include "disp/thread_map.h"

namespace disp {

namespace {

std::atomic<bool> started{false};

}  // namespace

int init_disp(double* depth_max) {
  if (started.exchange(true)) return 0;
  const disp_context* ctx = new_disp_context();
  if (depth_max) *depth_max = ctx->raw.depth_max;
  const disp_torch torch;
  init_opengl();
  build_programs();
  if (!font_is_set()) set_font_file(default_font_file);
  return 0;
}

}  // namespace disp
