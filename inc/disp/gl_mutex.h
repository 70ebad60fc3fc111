#pragma once

// The one process-wide right to have a GL context current. It is held from a
// thread's outermost context lock to its outermost unlock, so at most one
// thread of the process has any context current at a time: the share group
// is never used concurrently, which some drivers do not tolerate. Other
// display mutexes are taken inside it or alone.

#include <mutex>

namespace disp {

std::recursive_mutex& gl_mutex();

}  // namespace disp
