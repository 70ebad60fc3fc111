#include "common/debug_var.h"

#include <atomic>

namespace common {

namespace {
std::atomic<std::int32_t> debug_var_value{0};
}

std::int32_t debug_var() noexcept { return debug_var_value.load(std::memory_order_relaxed); }

void set_debug_var(std::int32_t v) noexcept { debug_var_value.store(v, std::memory_order_relaxed); }

}  // namespace common
