#ifndef QUVRA_DISP_CONTEXT_H
#define QUVRA_DISP_CONTEXT_H

/* Hidden GL contexts, the one-time display setup, and the lock by which every
   thread reaches GL.

   All contexts of the process form one share group: a buffer, texture or
   program made on any thread can be used on any other. One process-wide
   recursive GL mutex is held from a thread's outermost lock to its outermost
   unlock, so at most one thread has a context current at any moment; viewers
   take turns frame by frame. The calling order is always lock, GL calls,
   unlock, on one thread.

   Contexts come from EGL with no window system (Mesa's surfaceless platform,
   an EGL device, or the default display, in that order), desktop OpenGL 3.3
   or above, compatibility profile. Failing to create one ends the process
   with the reason; GL errors after that are never fatal and reach the log
   through GL debug output. */

#include <stdbool.h>

#include "quvra_export.h"

#ifdef __cplusplus
namespace disp {
struct disp_context;
struct disp_torch;
}  // namespace disp
typedef disp::disp_context disp_context;
typedef disp::disp_torch disp_torch;
#else
typedef struct disp_context disp_context;
typedef struct disp_torch disp_torch;
#endif

QV_EXTERN_C_BEGIN

/* One-time setup: gives the calling thread a context (kept until
   finish_disp), loads GL, builds the display's programs and, if no font was
   set, opens "sys/font.ttf" in the working directory (a missing file ends
   the process). Stores the depth range of the context's depth buffer in
   *depth_max unless depth_max is null. Returns 0. Later calls return 0 at
   once and write nothing. Not safe against two threads calling it at the
   same moment. */
QV_API int init_disp(double* depth_max) QV_NOEXCEPT;

/* Deletes the calling thread's context, as delete_disp_context. Programs and
   other one-time state stay for the life of the process. */
QV_API bool finish_disp(void) QV_NOEXCEPT;

/* Loads GL for the context current on the calling thread and logs the
   driver's identity, with a warning below GL 3.3 and on a CPU rasteriser.
   Runs once per process; returns 0. A failed load ends the process. */
QV_API int init_opengl(void) QV_NOEXCEPT;

/* Sends the current context's driver messages to the log, as the environment
   variable QV_GL_DEBUG says: "off" or "0" none, "async" asynchronous, any
   other value or none synchronous. At most 200 driver messages per process
   are logged. False before init_opengl has run (the next lock retries), true
   otherwise. The calling thread must have a context locked. */
QV_API bool install_gl_debug_output(void) QV_NOEXCEPT;

/* Creates a context and registers it for the calling thread. Owned by that
   thread's registration: free it with delete_disp_context on the same
   thread. An earlier context of the thread is unregistered but not
   destroyed. */
QV_API disp_context* new_disp_context(void) QV_NOEXCEPT;

/* The calling thread's context, or null. Borrowed. */
QV_API disp_context* get_disp_context(void) QV_NOEXCEPT;

/* False if the calling thread has no context; otherwise unregisters and
   destroys it and returns true. It must not be locked. */
QV_API bool delete_disp_context(void) QV_NOEXCEPT;

/* Locks ctx for the calling thread. Locks nest; the outermost one takes the
   GL mutex (waiting for other threads) and makes ctx current. Null is
   ignored. */
QV_API void lock_context(disp_context* ctx) QV_NOEXCEPT;

/* Undoes one lock_context; the outermost unlock releases the context and the
   GL mutex. Null, or a context that is not locked, is ignored. */
QV_API void unlock_context(disp_context* ctx) QV_NOEXCEPT;

/* lock_context on the calling thread's context, which must exist: without
   one the process ends with a message that says so. */
QV_API void lock_context_by_thread_map(void) QV_NOEXCEPT;

/* unlock_context on the calling thread's context; nothing if it has none. */
QV_API void unlock_context_by_thread_map(void) QV_NOEXCEPT;

/* Locks the calling thread's context, creating one for the torch's lifetime
   if the thread has none. Owned by the caller, end it with
   disp_torch__unlock on the same thread. Null if the allocation fails. */
QV_API disp_torch* disp_torch__lock(void) QV_NOEXCEPT;

/* Unlocks, deletes a context that the torch created, and frees the torch.
   Null is ignored. */
QV_API void disp_torch__unlock(disp_torch* torch) QV_NOEXCEPT;

/* Presents ctx's back buffer, only to keep a driver's frame pacing: viewers
   read their pixels from off-screen targets. 1 on success, also when the
   context has no surface to present; 0 on failure or for null. */
QV_API int swap_buffer(disp_context* ctx) QV_NOEXCEPT;

QV_EXTERN_C_END

#endif
