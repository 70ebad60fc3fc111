#include "common/progress_monitor_t.h"

#include <algorithm>
#include <cstring>

namespace common {

void progress_monitor_t::set_msg(std::string text, std::int64_t new_denominator) {
  {
    std::unique_lock lock(msg_lock);
    msg = std::move(text);
  }
  denominator.store(new_denominator, std::memory_order_relaxed);
  numerator.store(0, std::memory_order_relaxed);
  if (on_change) on_change(this);
}

void progress_monitor_t::set_numerator(std::int64_t value) {
  numerator.store(value, std::memory_order_relaxed);
  if (on_change) on_change(this);
}

std::string progress_monitor_t::get_msg() const {
  std::shared_lock lock(msg_lock);
  return msg;
}

void progress_monitor_t::attach_child(progress_monitor_t* child) {
  std::lock_guard lock(children_lock);
  children.push_back(child);
}

std::string progress_monitor_t::to_string() const {
  std::string out;
  _render(out, 0);
  return out;
}

void progress_monitor_t::_render(std::string& out, int depth) const {
  if (depth > 0) out.append(" ").append(static_cast<std::size_t>(depth), '+');
  out += get_msg();
  const std::int64_t num = numerator.load(std::memory_order_relaxed);
  const std::int64_t den = denominator.load(std::memory_order_relaxed);
  if (den != 0) {
    const std::string den_text = std::to_string(den);
    std::string num_text = std::to_string(num);
    if (num_text.size() < den_text.size()) num_text.insert(0, den_text.size() - num_text.size(), ' ');
    const auto percent = static_cast<std::int64_t>(static_cast<double>(num) / static_cast<double>(den) * 100.0);
    out.append("[").append(num_text).append("/").append(den_text).append("]");
    out.append("(").append(std::to_string(percent)).append("%)");
  }
  std::lock_guard lock(children_lock);
  for (const progress_monitor_t* child : children) child->_render(out, depth + 1);
}

void copy_text_to_buffer(const std::string& text, char* buf, std::size_t capacity) noexcept {
  if (!buf) return;
  std::memcpy(buf, text.c_str(), std::min(text.size() + 1, capacity));
}

}  // namespace common
