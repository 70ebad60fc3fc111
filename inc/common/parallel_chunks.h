#pragma once

// Runs fn(begin, end) over [0, items) cut into chunks: at most 32 chunks per
// hardware thread, taken one by one from an atomic counter by at most four
// workers per hardware thread, the calling thread working with them. With
// one hardware thread, or fewer than two items, it runs on the caller alone.
// The first exception thrown by fn stops further chunks and is rethrown on
// the calling thread once all workers are done.

#include <cstddef>
#include <functional>

namespace common {

void parallel_chunks(std::size_t items, const std::function<void(std::size_t, std::size_t)>& fn);

}  // namespace common
