#pragma once

// The shared state of a stop_source and its tokens: four machine words, with
// the semantics of the standard stop token.
//
//   token_refs       owners of the state: 1 for all sources together, plus
//                    one per token; the state is freed when it reaches 0
//   source_word      bit 0: a stop was requested; the bits above count the
//                    sources in steps of 2 (starts at 2, one source)
//   callbacks        head of the registered callback list; bit 0 of the word
//                    locks the list, bit 1 says that a thread waits for it
//   current_callback the callback that request_stop is running now, so that
//                    a thread deregistering it can wait for it to finish
//   stopping_thread  the thread that requested the stop: a callback that
//                    deregisters itself from inside its own run must not wait

#include <atomic>
#include <cstdint>

namespace common {

struct stop_callback_node_t {
  using fn_t = void (*)(void* ctx);
  fn_t fn = nullptr;
  void* ctx = nullptr;
  stop_callback_node_t* prev = nullptr;
  stop_callback_node_t* next = nullptr;
  bool linked = false;  // guarded by the list lock
};

class stop_state_t {
 public:
  bool stop_requested() const noexcept;
  // A stop was requested or a source still lives.
  bool stop_possible() const noexcept;

  // True if this call made the request. Runs every registered callback on
  // the calling thread, one at a time, before returning.
  bool request_stop() noexcept;

  // Registers node; if a stop was already requested, runs it at once on the
  // calling thread instead and returns false.
  bool add_callback(stop_callback_node_t* node) noexcept;
  // Unregisters node. If request_stop is running it on another thread, waits
  // until it has returned.
  void remove_callback(stop_callback_node_t* node) noexcept;

  void add_token_ref() noexcept;
  void add_source() noexcept;
  // Both free the state when its last owner goes; the pointer is dead then.
  static void release_token_ref(stop_state_t* state) noexcept;
  static void release_source(stop_state_t* state) noexcept;

 private:
  stop_callback_node_t* _lock_list() noexcept;
  void _unlock_list(stop_callback_node_t* head) noexcept;
  void _publish_current(stop_callback_node_t* node) noexcept;

  std::atomic<std::uint32_t> _token_refs{1};
  std::atomic<std::uint32_t> _source_word{2};
  std::atomic<std::uintptr_t> _callbacks{0};
  std::atomic<stop_callback_node_t*> _current_callback{nullptr};
  std::atomic<std::uint32_t> _stopping_thread{0};
};

}  // namespace common

// The holders handed to hosts: one pointer each, null when the state could
// not be allocated.
struct stop_source {
  common::stop_state_t* state = nullptr;
};

struct stop_token {
  common::stop_state_t* state = nullptr;
};
