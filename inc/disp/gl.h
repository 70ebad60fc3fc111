#ifndef QUVRA_DISP_GL_H
#define QUVRA_DISP_GL_H

/* The one way into GL for the library's own code: the pointers and flags of
   the generated loader (glBindBuffer and the like are macros for the
   glad_gl* pointers).

   The generator names its loading entry points gladLoadGL and
   gladLoadGLUserPtr; the library exports a gladLoadGL of its own with the
   older signature that hosts expect, so the generated ones are renamed here
   for every translation unit that sees them. */

#define gladLoadGL glad_generated_load_gl
#define gladLoadGLUserPtr glad_generated_load_gl_user_ptr
#include <glad/gl.h>
#undef gladLoadGL
#undef gladLoadGLUserPtr

#endif
