#pragma once

// One log line, bare (no level, no timestamp), to a mask of sinks. Every
// caller in the library passes log_sinks_all.

#include <string_view>

#include "common/log.h"

namespace common {

enum log_sinks : unsigned {
  log_sink_file = 1,      // "log-cpp.txt" in the working directory
  log_sink_console = 2,   // standard output
  log_sink_callback = 4,  // the host's log_func
  log_sinks_all = 7,
};

void log_line(std::string_view msg, unsigned sinks = log_sinks_all) noexcept;

void set_log_callback(log_func fn) noexcept;

}  // namespace common
