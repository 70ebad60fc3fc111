#pragma once

// Heap allocations made through global operator new since the program
// started. Linking allocation_counter.cpp replaces operator new for the whole
// binary, so only benchmarks that report allocations link it.

#include <cstdint>

std::uint64_t allocation_count() noexcept;
