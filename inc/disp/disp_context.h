#pragma once

// A thread's lockable hold on its hidden context. Locks nest: only the
// outermost lock makes the context current (and takes the GL mutex), only the
// outermost unlock releases it. lock_depth is touched only by the owning
// thread, so it needs no atomics.

#include <cstdint>

#include "disp/disp_raw_context_t.h"

namespace disp {

struct disp_context {
  void lock();
  void unlock();

  std::uint64_t lock_depth = 0;
  // Debug output is installed on the first lock after the loader is ready,
  // and retried on every outermost lock until then.
  std::uint8_t debug_output_installed = 0;
  disp_raw_context_t raw;
};

}  // namespace disp
