#include "common/stop_state_t.h"

#include <unistd.h>

namespace common {

namespace {

constexpr std::uintptr_t list_locked = 1;
constexpr std::uintptr_t list_waiter = 2;
constexpr std::uintptr_t list_bits = list_locked | list_waiter;
constexpr std::uint32_t stop_bit = 1;
constexpr std::uint32_t one_source = 2;

std::uint32_t this_thread_id() noexcept { return static_cast<std::uint32_t>(gettid()); }

stop_callback_node_t* as_node(std::uintptr_t word) noexcept {
  return reinterpret_cast<stop_callback_node_t*>(word & ~list_bits);
}

}  // namespace

bool stop_state_t::stop_requested() const noexcept {
  return (_source_word.load(std::memory_order_acquire) & stop_bit) != 0;
}

bool stop_state_t::stop_possible() const noexcept { return _source_word.load(std::memory_order_acquire) != 0; }

stop_callback_node_t* stop_state_t::_lock_list() noexcept {
  std::uintptr_t word = _callbacks.load(std::memory_order_relaxed);
  for (;;) {
    if ((word & list_locked) == 0) {
      if (_callbacks.compare_exchange_weak(word, word | list_locked, std::memory_order_acquire,
                                           std::memory_order_relaxed))
        return as_node(word);
      continue;
    }
    if ((word & list_waiter) == 0 &&
        !_callbacks.compare_exchange_weak(word, word | list_waiter, std::memory_order_relaxed,
                                          std::memory_order_relaxed))
      continue;
    _callbacks.wait(word | list_waiter, std::memory_order_relaxed);
    word = _callbacks.load(std::memory_order_relaxed);
  }
}

void stop_state_t::_unlock_list(stop_callback_node_t* head) noexcept {
  const std::uintptr_t old = _callbacks.exchange(reinterpret_cast<std::uintptr_t>(head), std::memory_order_release);
  if (old & list_waiter) _callbacks.notify_all();
}

void stop_state_t::_publish_current(stop_callback_node_t* node) noexcept {
  _current_callback.store(node, std::memory_order_release);
  _current_callback.notify_all();
}

bool stop_state_t::request_stop() noexcept {
  std::uint32_t word = _source_word.load(std::memory_order_relaxed);
  do {
    if (word & stop_bit) return false;
  } while (!_source_word.compare_exchange_weak(word, word | stop_bit, std::memory_order_acq_rel));
  _stopping_thread.store(this_thread_id(), std::memory_order_relaxed);

  for (;;) {
    stop_callback_node_t* head = _lock_list();
    if (!head) {
      _publish_current(nullptr);
      _unlock_list(nullptr);
      return true;
    }
    stop_callback_node_t* rest = head->next;
    if (rest) rest->prev = nullptr;
    head->linked = false;
    head->next = nullptr;
    _publish_current(head);
    _unlock_list(rest);
    // The node may be destroyed by its callback: it is not touched again.
    head->fn(head->ctx);
  }
}

bool stop_state_t::add_callback(stop_callback_node_t* node) noexcept {
  if (!stop_requested()) {
    stop_callback_node_t* head = _lock_list();
    // Checked again under the lock: a request that sets the bit from now on
    // drains the list after us, so the node cannot be missed.
    if (!stop_requested()) {
      node->prev = nullptr;
      node->next = head;
      if (head) head->prev = node;
      node->linked = true;
      _unlock_list(node);
      return true;
    }
    _unlock_list(head);
  }
  node->fn(node->ctx);
  return false;
}

void stop_state_t::remove_callback(stop_callback_node_t* node) noexcept {
  stop_callback_node_t* head = _lock_list();
  if (node->linked) {
    if (node->prev) node->prev->next = node->next;
    if (node->next) node->next->prev = node->prev;
    if (head == node) head = node->next;
    node->linked = false;
    _unlock_list(head);
    return;
  }
  const bool running = _current_callback.load(std::memory_order_acquire) == node;
  _unlock_list(head);
  if (!running || _stopping_thread.load(std::memory_order_relaxed) == this_thread_id()) return;
  while (_current_callback.load(std::memory_order_acquire) == node)
    _current_callback.wait(node, std::memory_order_acquire);
}

void stop_state_t::add_token_ref() noexcept { _token_refs.fetch_add(1, std::memory_order_relaxed); }

void stop_state_t::add_source() noexcept { _source_word.fetch_add(one_source, std::memory_order_relaxed); }

void stop_state_t::release_token_ref(stop_state_t* state) noexcept {
  if (state->_token_refs.fetch_sub(1, std::memory_order_acq_rel) == 1) delete state;
}

void stop_state_t::release_source(stop_state_t* state) noexcept {
  const std::uint32_t old = state->_source_word.fetch_sub(one_source, std::memory_order_acq_rel);
  if ((old >> 1) == 1) release_token_ref(state);
}

}  // namespace common
