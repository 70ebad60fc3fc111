// Contexts, the GL mutex, the thread map and the torch, through the boundary
// where a host would use them.

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <future>

#include "disp/context.h"
#include "disp/disp_context.h"
#include "disp/disp_raw_context_t.h"
#include "disp/gl.h"
#include "disp/gl_mutex.h"
#include "gl_test_support.h"

namespace {

using disp_test::on_new_thread;

// True when another thread could take the GL mutex right now.
bool gl_mutex_free_for_others() {
  return std::async(std::launch::async,
                    [] {
                      if (!disp::gl_mutex().try_lock()) return false;
                      disp::gl_mutex().unlock();
                      return true;
                    })
      .get();
}

TEST(DispContext, ContextsOnTwoThreadsShareABuffer) {
  QV_REQUIRE_GL();
  const std::array<std::uint32_t, 4> sent = {7, 11, 13, 0xCAFE};
  GLuint buffer = 0;
  on_new_thread([&] {
    disp_context* ctx = new_disp_context();
    lock_context(ctx);
    glGenBuffers(1, &buffer);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferData(GL_ARRAY_BUFFER, sizeof sent, sent.data(), GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glFinish();
    unlock_context(ctx);
    EXPECT_TRUE(delete_disp_context());
  });
  ASSERT_NE(buffer, 0u);

  std::array<std::uint32_t, 4> received = {};
  on_new_thread([&] {
    disp_context* ctx = new_disp_context();
    lock_context(ctx);
    EXPECT_TRUE(glIsBuffer(buffer));
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glGetBufferSubData(GL_ARRAY_BUFFER, 0, sizeof received, received.data());
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glDeleteBuffers(1, &buffer);
    unlock_context(ctx);
    delete_disp_context();
  });
  EXPECT_EQ(received, sent);
}

TEST(DispContext, NestedLocksReleaseTheGlMutexOnlyAtTheOutermostUnlock) {
  QV_REQUIRE_GL();
  disp_context* ctx = get_disp_context();
  ASSERT_NE(ctx, nullptr) << "init_disp leaves its thread a context";
  ASSERT_TRUE(gl_mutex_free_for_others());

  lock_context(ctx);
  lock_context_by_thread_map();
  EXPECT_EQ(ctx->lock_depth, 2u);
  EXPECT_FALSE(gl_mutex_free_for_others());
  unlock_context_by_thread_map();
  EXPECT_FALSE(gl_mutex_free_for_others());
  EXPECT_NE(glGetString(GL_VERSION), nullptr) << "the context stays current inside the outer lock";
  unlock_context(ctx);
  EXPECT_EQ(ctx->lock_depth, 0u);
  EXPECT_TRUE(gl_mutex_free_for_others());
}

TEST(DispContext, AThreadWaitsForTheGlMutexWhileAnotherHoldsItsContext) {
  QV_REQUIRE_GL();
  disp_context* ctx = get_disp_context();
  std::atomic<bool> other_locked{false};
  lock_context(ctx);
  std::thread other([&] {
    disp_torch* torch = disp_torch__lock();
    other_locked = true;
    disp_torch__unlock(torch);
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  EXPECT_FALSE(other_locked.load());
  unlock_context(ctx);
  other.join();
  EXPECT_TRUE(other_locked.load());
}

TEST(DispContext, ANewThreadHasNoContextAndNothingToDelete) {
  QV_REQUIRE_GL();
  on_new_thread([] {
    EXPECT_EQ(get_disp_context(), nullptr);
    EXPECT_FALSE(delete_disp_context());
    EXPECT_FALSE(finish_disp());
    unlock_context_by_thread_map();  // no context: nothing to do
  });
}

TEST(DispContext, ATorchOnAThreadWithoutAContextLeavesNoneBehind) {
  QV_REQUIRE_GL();
  on_new_thread([] {
    disp_torch* torch = disp_torch__lock();
    ASSERT_NE(torch, nullptr);
    EXPECT_NE(get_disp_context(), nullptr);
    EXPECT_NE(glGetString(GL_RENDERER), nullptr);
    disp_torch__unlock(torch);
    EXPECT_EQ(get_disp_context(), nullptr);
    EXPECT_FALSE(delete_disp_context());
    disp_torch__unlock(nullptr);
  });
  EXPECT_TRUE(gl_mutex_free_for_others());
}

TEST(DispContext, ATorchOnAThreadWithAContextKeepsIt) {
  QV_REQUIRE_GL();
  on_new_thread([] {
    disp_context* ctx = new_disp_context();
    disp_torch* torch = disp_torch__lock();
    EXPECT_EQ(ctx->lock_depth, 1u);
    disp_torch__unlock(torch);
    EXPECT_EQ(get_disp_context(), ctx);
    EXPECT_EQ(ctx->lock_depth, 0u);
    EXPECT_TRUE(delete_disp_context());
  });
}

TEST(DispContext, ASecondInitDispReturnsZeroAndWritesNothing) {
  QV_REQUIRE_GL();
  double depth_max = -1.0;
  EXPECT_EQ(init_disp(&depth_max), 0);
  EXPECT_EQ(depth_max, -1.0);
  EXPECT_EQ(init_disp(nullptr), 0);
}

TEST(DispContext, InitDispReportsTheDepthRangeOfItsContext) {
  QV_REQUIRE_GL();
  const disp_context* ctx = get_disp_context();
  ASSERT_NE(ctx, nullptr);
  EXPECT_EQ(disp_test::init_depth_max(), ctx->raw.depth_max);
  EXPECT_GT(disp_test::init_depth_max(), 0.0);
}

TEST(DispContext, SwapSucceedsWithAndWithoutASurface) {
  QV_REQUIRE_GL();
  EXPECT_EQ(swap_buffer(get_disp_context()), 1);
  EXPECT_EQ(swap_buffer(nullptr), 0);
  on_new_thread([] {
    disp::disp_context ctx{0, 0, disp::disp_raw_context_t(disp::disp_raw_context_t::surface_kind::pbuffer)};
    EXPECT_NE(ctx.raw.surface, EGL_NO_SURFACE);
    ctx.lock();
    EXPECT_NE(glGetString(GL_VERSION), nullptr);
    EXPECT_EQ(swap_buffer(&ctx), 1);
    ctx.unlock();
  });
}

}  // namespace
