// The loader as a host sees it: the version it parsed, loading through a
// host's lookup, the driver report in the log, and the forwarders reaching
// the same table as the library.

#include <gtest/gtest.h>

#include <EGL/egl.h>

#include <algorithm>
#include <string>

#include "disp/context.h"
#include "disp/gl.h"
#include "disp/gl_loader.h"
#include "disp/init_opengl.h"
#include "gl_test_support.h"

extern "C" const GLubyte* qvglGetString(GLenum name);
extern "C" void qvglGetIntegerv(GLenum name, GLint* data);

namespace {

bool logged_by_init(const std::string& prefix) {
  const auto& lines = disp_test::init_log_lines();
  return std::any_of(lines.begin(), lines.end(), [&](const std::string& l) { return l.rfind(prefix, 0) == 0; });
}

void* host_lookup(const char* name) { return reinterpret_cast<void*>(eglGetProcAddress(name)); }

TEST(GlLoader, LoadsTheContextVersionThroughEglAndThroughAHostLookup) {
  QV_REQUIRE_GL();
  disp_torch* torch = disp_torch__lock();
  EXPECT_TRUE(gladLoadGL());
  EXPECT_GE(GLVersion.major * 10 + GLVersion.minor, 33);
  GLint major = 0, minor = 0;
  glGetIntegerv(GL_MAJOR_VERSION, &major);
  glGetIntegerv(GL_MINOR_VERSION, &minor);
  EXPECT_EQ(GLVersion.major, major);
  EXPECT_EQ(GLVersion.minor, minor);
  EXPECT_TRUE(GLAD_GL_VERSION_3_3);

  EXPECT_TRUE(gladLoadGLLoader(host_lookup));
  EXPECT_EQ(GLVersion.major, major);
  EXPECT_NE(glad_glDrawArrays, nullptr);
  disp_torch__unlock(torch);
}

TEST(GlLoader, ALoadWithoutAContextOrLookupFailsAndSaysSo) {
  QV_REQUIRE_GL();
  EXPECT_FALSE(gladLoadGLLoader(nullptr));
  EXPECT_EQ(GLVersion.major, 0);
  disp_test::on_new_thread([] { EXPECT_FALSE(gladLoadGL()); });
  // Leave the table loaded for the tests that follow.
  disp_torch* torch = disp_torch__lock();
  EXPECT_TRUE(gladLoadGL());
  disp_torch__unlock(torch);
}

TEST(GlLoader, ForwardersCallTheLoadedTable) {
  QV_REQUIRE_GL();
  disp_torch* torch = disp_torch__lock();
  EXPECT_STREQ(reinterpret_cast<const char*>(qvglGetString(GL_RENDERER)),
               reinterpret_cast<const char*>(glGetString(GL_RENDERER)));
  GLint units = -1;
  qvglGetIntegerv(GL_MAX_TEXTURE_IMAGE_UNITS, &units);
  EXPECT_GT(units, 0);
  disp_torch__unlock(torch);
}

TEST(GlLoader, InitOpenglLogsTheDriverOnce) {
  QV_REQUIRE_GL();
  EXPECT_TRUE(logged_by_init("OpenGL context: version="));
  disp_test::clear_log();
  EXPECT_EQ(init_opengl(), 0);
  EXPECT_TRUE(disp_test::log_lines().empty());
}

TEST(GlLoader, TheSoftwareRendererWarningNamesTheRenderer) {
  QV_REQUIRE_GL();
  disp_torch* torch = disp_torch__lock();
  const std::string renderer = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
  disp_torch__unlock(torch);
  const std::string warning = "OpenGL is being rasterised on the CPU by Mesa (renderer \"" + renderer + "\").";
  if (renderer.find("llvmpipe") == std::string::npos) GTEST_SKIP() << "not on llvmpipe but on " << renderer;
  EXPECT_TRUE(logged_by_init(warning));
}

TEST(DriverReport, WarnsBelowTheFloorAndOnEveryCpuRasteriser) {
  disp::gl_identity_t id{"2.1 Mesa", "1.20", "Microsoft Corporation", "GDI Generic", false};
  auto lines = disp::driver_report(id);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0],
            "OpenGL context: version=2.1 Mesa glsl=1.20 vendor=Microsoft Corporation "
            "renderer=GDI Generic");
  EXPECT_EQ(lines[1].rfind("OpenGL context is below the 3.3 floor this renderer needs; the display "
                           "will stay black.",
                           0),
            0u);
  EXPECT_NE(lines[1].find("Neither is a question of the hardware's age."), std::string::npos);

  for (const char* renderer : {"llvmpipe (LLVM 15.0.6, 256 bits)", "softpipe", "Mesa swrast", "SWR"}) {
    id = {"4.5", "4.50", "Mesa", renderer, true};
    lines = disp::driver_report(id);
    ASSERT_EQ(lines.size(), 2u) << renderer;
    EXPECT_EQ(lines[1], std::string("OpenGL is being rasterised on the CPU by Mesa (renderer \"") + renderer +
                            "\"). Rendering will be one to two orders of magnitude slower than a "
                            "GPU and will compete with NC play for cores; with more than one "
                            "viewer the whole service serialises. This machine did not fail to be "
                            "new enough - it failed to reach a GPU driver.");
  }
  id = {"4.6", "4.60", "NVIDIA Corporation", "NVIDIA RTX A2000/PCIe/SSE2", true};
  EXPECT_EQ(disp::driver_report(id).size(), 1u);
  id = {"4.6", "4.60", "x", "swr-lowercase-does-not-count LLVMPIPE", true};
  EXPECT_EQ(disp::driver_report(id).size(), 1u) << "the names are matched case-sensitively";
}

}  // namespace
