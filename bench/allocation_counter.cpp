#include "allocation_counter.h"

#include <atomic>
#include <cstdlib>
#include <new>

// The replacements live apart from the benchmarks so that the compiler never
// inlines a malloc-backed new next to a free-backed delete and mistakes them
// for a mismatched pair.

namespace {

std::atomic<std::uint64_t> count{0};

}  // namespace

std::uint64_t allocation_count() noexcept { return count.load(std::memory_order_relaxed); }

void* operator new(std::size_t size) {
  count.fetch_add(1, std::memory_order_relaxed);
  if (void* p = std::malloc(size == 0 ? 1 : size)) return p;
  throw std::bad_alloc();
}

void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
