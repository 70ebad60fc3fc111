#include "common/progress_monitor.h"

#include "common/progress_monitor_t.h"

extern "C" {

int64_t progress_monitor__get_numerator(const progress_monitor_t* m) noexcept {
  return m ? m->numerator.load(std::memory_order_relaxed) : 0;
}

int64_t progress_monitor__get_denominator(const progress_monitor_t* m) noexcept {
  return m ? m->denominator.load(std::memory_order_relaxed) : 0;
}

void progress_monitor__get_msg(const progress_monitor_t* m, char* buf, size_t capacity) noexcept {
  if (!m) return;
  common::copy_text_to_buffer(m->get_msg(), buf, capacity);
}

void progress_monitor__set_msg(progress_monitor_t* m, const char* msg, int64_t denominator) noexcept {
  if (!m) return;
  m->set_msg(msg ? msg : "", denominator);
}

void progress_monitor__set_numerator(progress_monitor_t* m, int64_t value) noexcept {
  if (m) m->set_numerator(value);
}

void progress_monitor__to_string(const progress_monitor_t* m, char* buf, size_t capacity) noexcept {
  if (!m) return;
  common::copy_text_to_buffer(m->to_string(), buf, capacity);
}
}
