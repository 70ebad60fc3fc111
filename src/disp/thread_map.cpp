#include "disp/thread_map.h"

#include <unistd.h>

#include <memory>
#include <mutex>
#include <shared_mutex>
#include <unordered_map>

namespace disp {

namespace {

// Its lock is held only around lookups and is never held while another lock
// is taken, so it cannot take part in a lock-order cycle.
class thread_map_t {
 public:
  void put(std::uint32_t tid, disp_context* ctx) {
    std::unique_lock lock(_mutex);
    _map[tid] = ctx;
  }

  disp_context* get(std::uint32_t tid) const {
    std::shared_lock lock(_mutex);
    const auto it = _map.find(tid);
    return it == _map.end() ? nullptr : it->second;
  }

  disp_context* take(std::uint32_t tid) {
    std::unique_lock lock(_mutex);
    const auto it = _map.find(tid);
    if (it == _map.end()) return nullptr;
    disp_context* ctx = it->second;
    _map.erase(it);
    return ctx;
  }

 private:
  mutable std::shared_mutex _mutex;
  std::unordered_map<std::uint32_t, disp_context*> _map;
};

thread_map_t& thread_map() {
  static auto* map = new thread_map_t;  // never destroyed: threads may outlive statics
  return *map;
}

}  // namespace

std::uint32_t current_thread_id() { return static_cast<std::uint32_t>(gettid()); }

disp_context* new_disp_context() {
  auto ctx = std::make_unique<disp_context>();
  thread_map().put(current_thread_id(), ctx.get());
  return ctx.release();
}

disp_context* get_disp_context() { return thread_map().get(current_thread_id()); }

bool delete_disp_context() {
  const std::unique_ptr<disp_context> ctx(thread_map().take(current_thread_id()));
  return ctx != nullptr;
}

}  // namespace disp
