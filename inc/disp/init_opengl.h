#pragma once

// Loading GL and telling the log which driver the process reached. Runs once
// per process, with a context locked.

#include <string>
#include <vector>

namespace disp {

// Loads the entry points through the exported loader (fatal if that fails)
// and logs the driver's identity, with a warning below GL 3.3 and on a CPU
// rasteriser. A second call does nothing.
void init_opengl();

// True once init_opengl has loaded GL.
bool opengl_initialized();

// What a driver says about itself; "<unavailable>" for what it won't say.
struct gl_identity_t {
  std::string version, glsl, vendor, renderer;
  bool has_3_3 = false;
};

// The log lines init_opengl writes for a driver.
std::vector<std::string> driver_report(const gl_identity_t& identity);

}  // namespace disp
