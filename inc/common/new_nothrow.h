#pragma once

// Creating calls of the boundary return null on a failed allocation instead
// of throwing; this also covers what the constructor itself allocates.

#include <new>
#include <utility>

namespace common {

template <class T, class... Args>
T* new_nothrow(Args&&... args) noexcept {
  try {
    return new T(std::forward<Args>(args)...);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace common
