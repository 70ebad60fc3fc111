// NOLINTBEGIN(bugprone-reserved-identifier): the family__verb names are the boundary's fixed
// contract.
#include "disp/context.h"

#include "common/check.h"
#include "common/new_nothrow.h"
#include "disp/disp_context.h"
#include "disp/disp_torch.h"
#include "disp/gl_debug_output.h"
#include "disp/init_disp.h"
#include "disp/init_opengl.h"
#include "disp/thread_map.h"

extern "C" {

int init_disp(double* depth_max) noexcept { return disp::init_disp(depth_max); }

bool finish_disp(void) noexcept { return disp::delete_disp_context(); }

int init_opengl(void) noexcept {
  disp::init_opengl();
  return 0;
}

bool install_gl_debug_output(void) noexcept { return disp::install_gl_debug_output(); }

disp_context* new_disp_context(void) noexcept { return disp::new_disp_context(); }

disp_context* get_disp_context(void) noexcept { return disp::get_disp_context(); }

bool delete_disp_context(void) noexcept { return disp::delete_disp_context(); }

void lock_context(disp_context* ctx) noexcept {
  if (ctx) ctx->lock();
}

void unlock_context(disp_context* ctx) noexcept {
  if (ctx) ctx->unlock();
}

void lock_context_by_thread_map(void) noexcept {
  disp_context* ctx = disp::get_disp_context();
  QV_CHECK(ctx,
           "the calling thread has no display context to lock; create one with "
           "new_disp_context or use disp_torch__lock");
  ctx->lock();
}

void unlock_context_by_thread_map(void) noexcept {
  if (disp_context* ctx = disp::get_disp_context()) ctx->unlock();
}

disp_torch* disp_torch__lock(void) noexcept { return common::new_nothrow<disp::disp_torch>(); }

void disp_torch__unlock(disp_torch* torch) noexcept { delete torch; }

int swap_buffer(disp_context* ctx) noexcept { return ctx ? ctx->raw.swap() : 0; }
}
// NOLINTEND(bugprone-reserved-identifier)
