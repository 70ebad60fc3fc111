#include "common/parallel_chunks.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace common {

namespace {

struct chunk_plan_t {
  std::size_t items, chunks;
  // The first items % chunks chunks take one item more.
  std::size_t begin(std::size_t c) const { return c * (items / chunks) + std::min(c, items % chunks); }
};

}  // namespace

void parallel_chunks(std::size_t items, const std::function<void(std::size_t, std::size_t)>& fn) {
  const std::size_t n = std::thread::hardware_concurrency();
  if (n < 2 || items < 2) {
    fn(0, items);
    return;
  }
  const chunk_plan_t plan{items, std::min(items, 32 * n)};
  std::atomic<std::size_t> next{0};
  std::exception_ptr failure;
  std::mutex failure_mutex;
  const auto work = [&] {
    for (std::size_t c; (c = next.fetch_add(1)) < plan.chunks;) {
      try {
        fn(plan.begin(c), plan.begin(c + 1));
      } catch (...) {
        const std::lock_guard lock(failure_mutex);
        if (!failure) failure = std::current_exception();
        next = plan.chunks;  // no further chunks
      }
    }
  };
  std::vector<std::thread> workers;
  const std::size_t helpers = std::min(plan.chunks, 4 * n) - 1;
  try {
    for (std::size_t i = 0; i < helpers; ++i) workers.emplace_back(work);
  } catch (const std::system_error&) {
    // No more threads to be had: those started and the caller share the work.
  }
  work();
  for (std::thread& w : workers) w.join();
  if (failure) std::rethrow_exception(failure);
}

}  // namespace common
