#include "disp/disp_torch.h"

#include "disp/thread_map.h"

namespace disp {

disp_torch::disp_torch() : context(get_disp_context()), owns_context(0) {
  if (!context) {
    context = new_disp_context();
    owns_context = 1;
  }
  context->lock();
}

disp_torch::~disp_torch() {
  context->unlock();
  if (owns_context) delete_disp_context();
}

}  // namespace disp
