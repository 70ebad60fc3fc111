#pragma once

// A monitor that hands every change to a host's progress function, for the
// boundary calls that take one in the place of a monitor.

#include "common/progress_monitor_t.h"

namespace common {

struct forwarding_monitor_t : progress_monitor_t {
  using host_fn = void (*)(const progress_monitor_t* monitor);

  explicit forwarding_monitor_t(host_fn fn) : host(fn) { on_change = forward; }

  static void forward(progress_monitor_t* m) { static_cast<forwarding_monitor_t*>(m)->host(m); }

  host_fn host;
};

}  // namespace common
