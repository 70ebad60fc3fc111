#pragma once

// Which context each thread has. A thread gets one explicitly (init_disp, an
// engine thread) or implicitly through a torch; deletion always concerns the
// calling thread, so a context is deleted by the thread that owns it.

#include <cstdint>

#include "disp/disp_context.h"

namespace disp {

// The kernel's id of the calling thread.
std::uint32_t current_thread_id();

// Creates a context and registers it for the calling thread. An earlier entry
// of the thread is replaced, not destroyed: its owner still holds it.
disp_context* new_disp_context();

// The calling thread's context, or null.
disp_context* get_disp_context();

// False if the calling thread has none; otherwise unregisters and destroys
// it. The context must not be locked.
bool delete_disp_context();

}  // namespace disp
