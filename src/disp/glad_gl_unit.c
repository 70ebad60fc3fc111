/* Compiles the generated loader. Its function pointers and extension flags
   are part of the library's exported surface, while its own loading entry
   points stay hidden: the exported loader is the one in gl_loader.cpp. The
   explicit hidden declarations come first, because a symbol keeps the
   visibility of its first declaration. */

typedef void (*glad_generated_proc_t)(void);
__attribute__((visibility("hidden"))) int glad_generated_load_gl(
    glad_generated_proc_t (*load)(const char* name));
__attribute__((visibility("hidden"))) int glad_generated_load_gl_user_ptr(
    glad_generated_proc_t (*load)(void* user, const char* name), void* user);

#pragma GCC visibility push(default)
#include "disp/gl.h"
#define gladLoadGL glad_generated_load_gl
#define gladLoadGLUserPtr glad_generated_load_gl_user_ptr
#include "gl.c"
#pragma GCC visibility pop
