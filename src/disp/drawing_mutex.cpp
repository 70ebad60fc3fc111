#include "disp/drawing_mutex.h"

namespace disp {

std::recursive_mutex& drawing_mutex() {
  // Never destroyed: drawings held by statics may be released at exit.
  static auto* mutex = new std::recursive_mutex;
  return *mutex;
}

}  // namespace disp
