#ifndef QUVRA_DISP_GL_LOADER_H
#define QUVRA_DISP_GL_LOADER_H

/* The library's own GL loader, exported so that a host can call GL in the
   same loaded table that the library uses.

   Besides what is declared here the library exports, with the names and
   types of the OpenGL registry (compatibility profile, all extensions):
     glad_gl<Name>   one function pointer per GL command, e.g.
                     PFNGLBINDBUFFERPROC glad_glBindBuffer;
     GLAD_GL_<Name>  one int flag per version and extension, non-zero when
                     the driver has it, e.g. GLAD_GL_VERSION_3_3,
                     GLAD_GL_KHR_debug;
     qvgl<Name>      one function per command of the core profile and of the
                     extensions usable on it, which does nothing but call
                     glad_gl<Name> with its arguments; for hosts whose
                     foreign-function layer cannot read exported data.
   All of them are valid once a load has succeeded, for the contexts of the
   library's share group. */

#include "quvra_export.h"

QV_EXTERN_C_BEGIN

/* Returns the address of a GL entry point, or null. */
typedef void* (*GLADloadproc)(const char* name);

/* The version of the context that the last load saw; 0.0 before a load or
   after a failed one. */
struct gladGLversionStruct {
  int major;
  int minor;
};
QV_API extern struct gladGLversionStruct GLVersion;

/* Loads every entry point through EGL for the context current on the calling
   thread. Non-zero on success, 0 when no context is current or the driver
   gives no version. */
QV_API int gladLoadGL(void) QV_NOEXCEPT;

/* The same, through the host's own lookup function, which must not be null. */
QV_API int gladLoadGLLoader(GLADloadproc load) QV_NOEXCEPT;

QV_EXTERN_C_END

#endif
