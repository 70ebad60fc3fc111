#pragma once

// The right to bind and draw vertex buffers. Buffer bindings are per context
// but buffer names are shared by the whole share group, and a shared buffer
// must not be written while another draw reads it. Taken inside the GL mutex.

#include <mutex>

namespace disp {

std::recursive_mutex& drawing_mutex();

}  // namespace disp
