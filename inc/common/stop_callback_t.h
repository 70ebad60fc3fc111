#pragma once

// Runs fn(ctx) when a stop is requested on the token's state, on the thread
// that requests it; at once, on this thread, if the stop came already. The
// destructor unregisters, waiting for a run in progress on another thread.
// Keeps the state alive while it lives.

#include "common/stop_state_t.h"

namespace common {

class stop_callback_t {
 public:
  stop_callback_t(const stop_token* token, stop_callback_node_t::fn_t fn, void* ctx) noexcept;
  ~stop_callback_t();
  stop_callback_t(const stop_callback_t&) = delete;
  stop_callback_t& operator=(const stop_callback_t&) = delete;

 private:
  stop_state_t* _state = nullptr;
  stop_callback_node_t _node;
  bool _registered = false;
};

}  // namespace common
