#include "common/debug_util.h"

#include "common/debug_var.h"

extern "C" {

int32_t debug_util__get_debug_var(void) noexcept { return common::debug_var(); }

void debug_util__set_debug_var(int32_t v) noexcept { common::set_debug_var(v); }
}
