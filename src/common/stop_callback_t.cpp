#include "common/stop_callback_t.h"

namespace common {

stop_callback_t::stop_callback_t(const stop_token* token, stop_callback_node_t::fn_t fn, void* ctx) noexcept {
  _node.fn = fn;
  _node.ctx = ctx;
  if (!token || !token->state) return;
  _state = token->state;
  _state->add_token_ref();
  _registered = _state->add_callback(&_node);
}

stop_callback_t::~stop_callback_t() {
  if (!_state) return;
  if (_registered) _state->remove_callback(&_node);
  stop_state_t::release_token_ref(_state);
}

}  // namespace common
