#include "disp/gl_mutex.h"

namespace disp {

std::recursive_mutex& gl_mutex() {
  // Never destroyed: contexts of detached threads may still unlock at exit.
  static auto* mutex = new std::recursive_mutex;
  return *mutex;
}

}  // namespace disp
