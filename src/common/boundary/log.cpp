#include "common/log.h"

#include "common/log_sink.h"

extern "C" {

void set_log_func(log_func fn) noexcept { common::set_log_callback(fn); }
}
