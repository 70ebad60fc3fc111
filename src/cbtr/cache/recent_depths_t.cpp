#include "cbtr/cache/recent_depths_t.h"

#include <algorithm>

namespace cbtr {

int recent_depths_t::record(int depth) {
  const std::lock_guard lock(_mutex);
  std::deque<int>& queue = _by_thread[std::this_thread::get_id()];
  queue.push_back(depth);
  if (queue.size() > frames) queue.pop_front();
  return *std::min_element(queue.begin(), queue.end());
}

}  // namespace cbtr
