#pragma once

#include <cstdint>

namespace common {

// The host's scratch switch. Nothing in the library reads it.
std::int32_t debug_var() noexcept;
void set_debug_var(std::int32_t v) noexcept;

}  // namespace common
