#include "common/stop.h"

#include <new>

#include "common/stop_state_t.h"

namespace {

// One test serves sources and tokens alike.
int stop_requested(const common::stop_state_t* state) noexcept { return state && state->stop_requested(); }

}  // namespace

extern "C" {

stop_source* new__stop_source(void) noexcept {
  auto* source = new (std::nothrow) stop_source;
  if (source) source->state = new (std::nothrow) common::stop_state_t;
  return source;
}

void delete__stop_source(stop_source* s) noexcept {
  if (!s) return;
  if (s->state) common::stop_state_t::release_source(s->state);
  delete s;
}

stop_token* stop_source__get_token(const stop_source* s) noexcept {
  if (!s) return nullptr;
  auto* token = new (std::nothrow) stop_token;
  if (!token) return nullptr;
  token->state = s->state;
  if (token->state) token->state->add_token_ref();
  return token;
}

void delete__stop_token(stop_token* t) noexcept {
  if (!t) return;
  if (t->state) common::stop_state_t::release_token_ref(t->state);
  delete t;
}

int stop_source__request_stop(stop_source* s) noexcept { return s && s->state && s->state->request_stop(); }

int stop_source__stop_possible(const stop_source* s) noexcept { return s && s->state; }

int stop_source__stop_requested(const stop_source* s) noexcept { return stop_requested(s ? s->state : nullptr); }

int stop_token__stop_requested(const stop_token* t) noexcept { return stop_requested(t ? t->state : nullptr); }

int stop_token__stop_possible(const stop_token* t) noexcept { return t && t->state && t->state->stop_possible(); }
}
