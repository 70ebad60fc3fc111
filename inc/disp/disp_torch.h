#pragma once

// A scoped lock on the calling thread's context that lets any thread touch GL
// objects (to free cached buffers, say) without having set up a context: a
// thread without one gets a context for the torch's lifetime only.

#include <cstdint>

#include "disp/disp_context.h"

namespace disp {

struct disp_torch {
  disp_torch();
  ~disp_torch();

  disp_torch(const disp_torch&) = delete;
  disp_torch& operator=(const disp_torch&) = delete;

  disp_context* context;
  std::uint8_t owns_context;  // created for this torch, deleted with it
};

}  // namespace disp
