#pragma once

// Compiling and linking one program. A program that fails to build is not
// fatal: the log says why, in words for a support engineer, and the scene
// renders empty with it (uniform locations then read -1, which GL ignores).

#include <string>

#include "disp/gl.h"

namespace disp {

// Returns the program name in every case. Needs a context locked. The name is
// the one the log lines give.
GLuint _gen_prog(const std::string& vertex_source, const std::string& fragment_source);

}  // namespace disp
