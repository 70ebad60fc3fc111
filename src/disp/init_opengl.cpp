#include "disp/init_opengl.h"

#include <array>
#include <atomic>

#include "common/check.h"
#include "common/log_sink.h"
#include "disp/gl.h"
#include "disp/gl_loader.h"

namespace disp {

namespace {

std::atomic<bool> initialized{false};

std::string gl_string(GLenum name) {
  const GLubyte* text = glad_glGetString ? glGetString(name) : nullptr;
  return text ? reinterpret_cast<const char*>(text) : "<unavailable>";
}

constexpr const char* below_floor_message =
    "OpenGL context is below the 3.3 floor this renderer needs; the display will stay black. "
    "A renderer of \"GDI Generic\" means the process reached GL through a remote session or a "
    "machine with no vendor driver installed; \"SVGA3D\" at this version means a VMware guest "
    "whose host GPU cannot back 3D. Neither is a question of the hardware's age.";

bool is_cpu_rasteriser(const std::string& renderer) {
  static constexpr std::array<const char*, 4> names = {"llvmpipe", "softpipe", "swrast", "SWR"};
  for (const char* name : names)
    if (renderer.find(name) != std::string::npos) return true;
  return false;
}

}  // namespace

std::vector<std::string> driver_report(const gl_identity_t& id) {
  std::vector<std::string> lines;
  lines.push_back("OpenGL context: version=" + id.version + " glsl=" + id.glsl + " vendor=" + id.vendor +
                  " renderer=" + id.renderer);
  if (!id.has_3_3) lines.emplace_back(below_floor_message);
  if (is_cpu_rasteriser(id.renderer))
    lines.push_back("OpenGL is being rasterised on the CPU by Mesa (renderer \"" + id.renderer +
                    "\"). Rendering will be one to two orders of magnitude slower than a GPU and "
                    "will compete with NC play for cores; with more than one viewer the whole "
                    "service serialises. This machine did not fail to be new enough - it failed "
                    "to reach a GPU driver.");
  return lines;
}

void init_opengl() {
  if (initialized.load()) return;
  if (!gladLoadGL()) QV_ABORT("Failed to initialize GLAD\n");
  initialized.store(true);
  const gl_identity_t identity{gl_string(GL_VERSION), gl_string(GL_SHADING_LANGUAGE_VERSION), gl_string(GL_VENDOR),
                               gl_string(GL_RENDERER), GLAD_GL_VERSION_3_3 != 0};
  for (const std::string& line : driver_report(identity)) common::log_line(line);
}

bool opengl_initialized() { return initialized.load(); }

}  // namespace disp
