#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "common/stop.h"
#include "common/stop_callback_t.h"

namespace {

using namespace std::chrono_literals;

struct source_guard {
  stop_source* s = new__stop_source();
  ~source_guard() { delete__stop_source(s); }
};

struct token_guard {
  stop_token* t;
  explicit token_guard(const stop_source* s) : t(stop_source__get_token(s)) {}
  ~token_guard() { delete__stop_token(t); }
};

TEST(StopPair, RequestIsMadeOnceAndSeenByTokens) {
  source_guard src;
  token_guard tok(src.s);
  EXPECT_TRUE(stop_source__stop_possible(src.s));
  EXPECT_TRUE(stop_token__stop_possible(tok.t));
  EXPECT_FALSE(stop_token__stop_requested(tok.t));
  EXPECT_EQ(stop_source__request_stop(src.s), 1);
  EXPECT_EQ(stop_source__request_stop(src.s), 0);
  EXPECT_TRUE(stop_source__stop_requested(src.s));
  EXPECT_TRUE(stop_token__stop_requested(tok.t));
}

// A token outliving its source keeps a request made before, and without one
// can no longer be stopped.
TEST(StopPair, TokenOutlivingItsSourceKeepsWhatItSaw) {
  for (const bool requested : {false, true}) {
    stop_source* src = new__stop_source();
    stop_token* tok = stop_source__get_token(src);
    if (requested) stop_source__request_stop(src);
    delete__stop_source(src);
    EXPECT_EQ(stop_token__stop_requested(tok), requested ? 1 : 0);
    EXPECT_EQ(stop_token__stop_possible(tok), requested ? 1 : 0);
    delete__stop_token(tok);
  }
}

TEST(StopPair, NullHoldersAndSourcesWithoutStateAreHarmless) {
  delete__stop_source(nullptr);
  delete__stop_token(nullptr);
  EXPECT_EQ(stop_source__get_token(nullptr), nullptr);
  EXPECT_EQ(stop_source__request_stop(nullptr), 0);
  EXPECT_EQ(stop_source__stop_possible(nullptr), 0);
  EXPECT_EQ(stop_source__stop_requested(nullptr), 0);
  EXPECT_EQ(stop_token__stop_requested(nullptr), 0);
  EXPECT_EQ(stop_token__stop_possible(nullptr), 0);
  stop_source empty;  // as after a failed allocation of the shared state
  EXPECT_EQ(stop_source__stop_possible(&empty), 0);
  EXPECT_EQ(stop_source__request_stop(&empty), 0);
  token_guard tok(&empty);
  EXPECT_EQ(stop_token__stop_possible(tok.t), 0);
}

struct call_log {
  std::atomic<int> calls{0};
  std::atomic<std::thread::id> thread{};
};

void note_call(void* ctx) {
  auto* log = static_cast<call_log*>(ctx);
  log->thread = std::this_thread::get_id();
  log->calls.fetch_add(1);
}

TEST(StopCallbacks, RunOnceOnTheThreadThatWinsTheRequest) {
  for (int round = 0; round < 50; ++round) {
    source_guard src;
    token_guard tok(src.s);
    std::vector<call_log> logs(8);
    std::vector<std::unique_ptr<common::stop_callback_t>> callbacks;
    for (call_log& log : logs) callbacks.push_back(std::make_unique<common::stop_callback_t>(tok.t, note_call, &log));

    std::atomic<bool> go{false};
    std::thread::id winner[2];
    int made[2] = {0, 0};
    std::thread racers[2];
    for (int i = 0; i < 2; ++i) {
      racers[i] = std::thread([&, i] {
        while (!go) std::this_thread::yield();
        made[i] = stop_source__request_stop(src.s);
        winner[i] = std::this_thread::get_id();
      });
    }
    go = true;
    for (std::thread& t : racers) t.join();

    ASSERT_EQ(made[0] + made[1], 1);
    const std::thread::id expected = made[0] ? winner[0] : winner[1];
    for (const call_log& log : logs) {
      EXPECT_EQ(log.calls, 1);
      EXPECT_EQ(log.thread.load(), expected);
    }
  }
}

// Unregistered before the stop, a callback never runs; registered after it,
// it runs at once on the registering thread.
TEST(StopCallbacks, RegisteredAfterTheStopRunsAtOnceAndUnregisteredNever) {
  source_guard src;
  token_guard tok(src.s);
  call_log before, after;
  { common::stop_callback_t cb(tok.t, note_call, &before); }
  stop_source__request_stop(src.s);
  common::stop_callback_t cb(tok.t, note_call, &after);
  EXPECT_EQ(before.calls, 0);
  EXPECT_EQ(after.calls, 1);
  EXPECT_EQ(after.thread.load(), std::this_thread::get_id());
}

struct slow_call {
  std::atomic<bool> started{false};
  std::atomic<bool> finished{false};
};

void run_slowly(void* ctx) {
  auto* s = static_cast<slow_call*>(ctx);
  s->started = true;
  std::this_thread::sleep_for(50ms);
  s->finished = true;
}

TEST(StopCallbacks, UnregisteringWaitsForARunOnAnotherThread) {
  source_guard src;
  token_guard tok(src.s);
  slow_call s;
  auto cb = std::make_unique<common::stop_callback_t>(tok.t, run_slowly, &s);
  std::thread requester([&] { stop_source__request_stop(src.s); });
  while (!s.started) std::this_thread::yield();
  cb.reset();
  EXPECT_TRUE(s.finished);
  requester.join();
}

struct self_removing {
  std::unique_ptr<common::stop_callback_t> cb;
  bool ran = false;
};

void remove_self(void* ctx) {
  auto* s = static_cast<self_removing*>(ctx);
  s->ran = true;
  s->cb.reset();  // must not wait for itself
}

TEST(StopCallbacks, CallbackMayUnregisterItselfWhileRunning) {
  source_guard src;
  token_guard tok(src.s);
  self_removing s;
  s.cb = std::make_unique<common::stop_callback_t>(tok.t, remove_self, &s);
  EXPECT_EQ(stop_source__request_stop(src.s), 1);
  EXPECT_TRUE(s.ran);
  EXPECT_EQ(s.cb, nullptr);
}

TEST(StopCallbacks, KeepTheStateAliveAfterSourceAndTokenAreGone) {
  stop_source* src = new__stop_source();
  stop_token* tok = stop_source__get_token(src);
  call_log log;
  {
    common::stop_callback_t cb(tok, note_call, &log);
    delete__stop_token(tok);
    EXPECT_EQ(stop_source__request_stop(src), 1);
    delete__stop_source(src);
  }
  EXPECT_EQ(log.calls, 1);
}

}  // namespace
