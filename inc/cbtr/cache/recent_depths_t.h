#pragma once

// The depths at which a tree was last drawn, per reader thread. A view that
// moves closer gets finer cells only once ten frames in a row have asked
// for them, while a view that moves away gets coarser cells at once; so the
// depth does not flicker between frames.

#include <cstddef>
#include <deque>
#include <mutex>
#include <thread>
#include <unordered_map>

namespace cbtr {

class recent_depths_t {
 public:
  static constexpr std::size_t frames = 10;

  // Appends depth to the calling thread's queue, keeping the last `frames`,
  // and returns the smallest depth in it.
  int record(int depth);

 private:
  std::mutex _mutex;
  std::unordered_map<std::thread::id, std::deque<int>> _by_thread;
};

}  // namespace cbtr
