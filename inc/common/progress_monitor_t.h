#pragma once

// A progress record of a long operation, with sub-steps as children. Worker
// threads set the message and numerator; hosts poll from other threads.
// Numerator and denominator are single words read without a lock; only the
// message needs one.
//
// The monitor owns neither the callback's context nor its children: a
// context travels by embedding the monitor as the first member of a larger
// object, and children are attached by the operation that owns them.

#include <atomic>
#include <cstdint>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <vector>

#include "common/progress_monitor.h"

namespace common {

struct progress_monitor_t {
  using change_fn = void (*)(progress_monitor_t* monitor);

  change_fn on_change = nullptr;
  std::atomic<std::int64_t> numerator{0};
  std::atomic<std::int64_t> denominator{0};  // 0: the step has no count
  std::string msg;
  std::vector<progress_monitor_t*> children;
  mutable std::shared_mutex msg_lock;
  mutable std::mutex children_lock;

  // Starts a step: message, denominator, numerator back to 0, then on_change.
  void set_msg(std::string text, std::int64_t new_denominator);
  void set_numerator(std::int64_t value);
  std::string get_msg() const;
  void attach_child(progress_monitor_t* child);

  // The whole tree on one line: "msg[ n/d](p%) +child[..](..) ++grandchild".
  std::string to_string() const;

 private:
  void _render(std::string& out, int depth) const;
};

// Copies min(text length + 1, capacity) bytes, so a short buffer receives a
// truncated text without a terminator.
void copy_text_to_buffer(const std::string& text, char* buf, std::size_t capacity) noexcept;

}  // namespace common
