// The depth range a context reports, from the depth bits it really has.

#include <gtest/gtest.h>

#include "disp/context.h"
#include "disp/disp_context.h"
#include "disp/egl_display_t.h"
#include "disp/pixel_format.h"
#include "gl_test_support.h"

namespace {

TEST(DepthMax, FollowsTheDepthBitsWithAFallbackWhereTheSignedShiftOverflows) {
  EXPECT_EQ(disp::depth_max_for_bits(16), 32767.0);
  EXPECT_EQ(disp::depth_max_for_bits(24), 8388607.0);
  EXPECT_EQ(disp::depth_max_for_bits(32), 40000.0);
  // The shift count is masked to five bits, as the hardware shift does.
  EXPECT_EQ(disp::depth_max_for_bits(33), 0.0);
  EXPECT_EQ(disp::depth_max_for_bits(64), 40000.0);
}

TEST(DepthMax, OfALivingContextMatchesItsConfiguration) {
  QV_REQUIRE_GL();
  const EGLDisplay display = disp::egl_display().display;
  const auto format = disp::choose_pixel_format(display, 0);
  ASSERT_TRUE(format.has_value());
  EXPECT_GE(format->depth_bits, 16);
  EGLint depth_bits = 0;
  ASSERT_TRUE(eglGetConfigAttrib(display, format->config, EGL_DEPTH_SIZE, &depth_bits));
  EXPECT_EQ(depth_bits, format->depth_bits);
  EXPECT_EQ(get_disp_context()->raw.depth_max, disp::depth_max_for_bits(depth_bits));
}

TEST(DepthMax, NoConfigurationOffersAnImpossibleSurfaceType) {
  QV_REQUIRE_GL();
  EXPECT_FALSE(disp::choose_pixel_format(disp::egl_display().display, 0x7FFF0000).has_value());
}

}  // namespace
