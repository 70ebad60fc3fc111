#include "disp/gl_loader.h"

#include <EGL/egl.h>

#include "disp/gl.h"

struct gladGLversionStruct GLVersion = {0, 0};

namespace {

GLADapiproc load_through_host(void* user, const char* name) {
  const GLADloadproc load = *static_cast<const GLADloadproc*>(user);
  return reinterpret_cast<GLADapiproc>(load(name));
}

GLADapiproc load_through_egl(const char* name) { return reinterpret_cast<GLADapiproc>(eglGetProcAddress(name)); }

int record_version(int version) {
  GLVersion.major = GLAD_VERSION_MAJOR(version);
  GLVersion.minor = GLAD_VERSION_MINOR(version);
  return GLVersion.major != 0 || GLVersion.minor != 0;
}

}  // namespace

extern "C" {

int gladLoadGL(void) noexcept { return record_version(glad_generated_load_gl(load_through_egl)); }

int gladLoadGLLoader(GLADloadproc load) noexcept {
  if (!load) return record_version(0);
  return record_version(glad_generated_load_gl_user_ptr(load_through_host, &load));
}
}
