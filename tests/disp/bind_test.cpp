// The render state as a host's render loop uses it through the boundary:
// the model stack, the lazily computed products, culling against the view
// box, and the colour, line width and point size stacks.

#include <gtest/gtest.h>

#include <cmath>

#include "disp/bind.h"
#include "disp/context.h"
#include "disp/gl.h"
#include "disp/pose_math.h"
#include "disp/render_state.h"
#include "geom/mat4d.h"
#include "gl_test_support.h"

namespace {

using geom::mat4d;

constexpr int width = 200, height = 100;
constexpr double depth = 8388607.0;

// The engine's matrices for a panel of width x height: the view cube of side
// 2 mapped to the panel's height, z in depth units.
mat4d panel_scale() { return disp::uniform_scale(height / 2); }
mat4d panel_to_clip() { return {{2.0 / width, 0, 0, 0, 0, 2.0 / height, 0, 0, 0, 0, -2.0 / depth, 0, 0, 0, 0, 1}}; }
mat4d turn_z_90() { return {{0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}}; }

void expect_near(const mat4d& got, const mat4d& want, double tol = 1e-9) {
  for (int i = 0; i < 16; ++i) EXPECT_NEAR(got.m[i], want.m[i], tol) << "element " << i;
}

class BindTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!disp_test::gl_skip_reason().empty()) return;
    _torch = disp_torch__lock();
    const mat4d model = disp::translation(1, 2, 3), view = turn_z_90();
    const mat4d scale = panel_scale(), to_clip = panel_to_clip();
    b = bind__new(&model, &view, &scale, &to_clip, 0, width, height);
  }
  void TearDown() override {
    bind__delete(b);
    disp_torch__unlock(_torch);
  }

  disp::bind* b = nullptr;

 private:
  disp_torch* _torch = nullptr;
};

TEST_F(BindTest, ProductsFollowTheTopOfTheStack) {
  QV_REQUIRE_GL();
  ASSERT_NE(b, nullptr);
  mat4d mv, mvs, mvp;
  bind__mv_mat4d(b, &mv);
  expect_near(mv, disp::translation(1, 2, 3) * turn_z_90());
  bind__mvs_mat4d(b, &mvs);
  expect_near(mvs, mv * panel_scale());
  bind__mvp_mat4d(b, &mvp);
  expect_near(mvp, mv * panel_scale() * panel_to_clip());

  // A change of the top is seen by the very next read of each product.
  mat_stack__push(b);
  const mat4d moved = disp::translation(-5, 0, 0);
  mat_stack__load(b, &moved);
  bind__mvp_mat4d(b, &mvp);
  expect_near(mvp, moved * turn_z_90() * panel_scale() * panel_to_clip());
  mat_stack__pop(b);
  bind__mv_mat4d(b, &mv);
  expect_near(mv, disp::translation(1, 2, 3) * turn_z_90());
  EXPECT_EQ(b->mvp_f()[12], static_cast<float>(b->mvp().m[12]));
}

TEST_F(BindTest, ResetLeavesOneIdentityNotTheModel) {
  QV_REQUIRE_GL();
  mat_stack__push(b);
  mat_stack__push(b);
  mat_stack__reset(b);
  mat4d top;
  mat_stack__lastc(b, &top);
  expect_near(top, mat4d::identity());
  mat_stack__pop(b);
  EXPECT_THROW(b->top(), std::out_of_range);
  mat_stack__pop(b);  // below the bottom: ignored
}

TEST_F(BindTest, PushProductScaleAndTranslateApplyBeforeTheTop) {
  QV_REQUIRE_GL();
  b->push_product(disp::uniform_scale(2));
  b->translate_top(1, 0, 0);
  // A point at the origin goes: translate (1,0,0), scale 2, then the model.
  const geom::vec3d p = b->top().apply({0, 0, 0});
  EXPECT_NEAR(p.x, 2 + 1, 1e-12);
  EXPECT_NEAR(p.y, 2, 1e-12);
  EXPECT_NEAR(p.z, 3, 1e-12);
  EXPECT_NEAR(bind__getMvScale(b), 2.0, 1e-12);
}

TEST_F(BindTest, BoxRelationIsStrictOnBothLimits) {
  QV_REQUIRE_GL();
  mat_stack__reset(b);
  // The view box in view space: 2 * width / height by 2, depth / (height / 2) deep.
  EXPECT_NEAR(b->view_half_x, 2.0, 1e-9);
  EXPECT_NEAR(b->view_half_y, 1.0, 1e-9);
  EXPECT_NEAR(b->view_half_z, depth / height, 1e-6);
  const double centre[3] = {0, 0, 0};
  EXPECT_EQ(bind__getMvpBoxRelation(b, centre, 0.0), 2);
  EXPECT_EQ(bind__getMvpBoxRelation(b, centre, 0.5), 2);
  EXPECT_EQ(bind__getMvpBoxRelation(b, centre, 1.0), 1) << "touching the inner limit crosses";
  // View x is model -y after the quarter turn.
  const double beside[3] = {0, -2.5, 0};
  EXPECT_EQ(bind__getMvpBoxRelation(b, beside, 0.5), 1) << "touching the outer limit is not outside";
  EXPECT_EQ(bind__getMvpBoxRelation(b, beside, 0.4), 0);
}

TEST_F(BindTest, ProjDepthAndPixelLength) {
  QV_REQUIRE_GL();
  EXPECT_DOUBLE_EQ(bind__get_proj_depth(b), depth);
  EXPECT_NEAR(bind__reciprocal_vs_scale(b), 2.0 / height, 1e-15);
}

TEST_F(BindTest, ColourStackRestoresTheExactFloats) {
  QV_REQUIRE_GL();
  EXPECT_EQ(b->color, (std::array<float, 3>{1, 1, 1}));
  const double rgb[3] = {0.1, 0.2, 0.30000000000000004};
  bind__push_load_color(b, rgb);
  const std::array<float, 3> narrowed = b->color;
  EXPECT_EQ(narrowed[0], 0.1f);
  bind__push_color(b);
  const double other[3] = {0.9, 0.9, 0.9};
  bind__push_load_color(b, other);
  bind__pop_color(b);
  bind__pop_color(b);
  EXPECT_EQ(b->color, narrowed);
  bind__pop_color(b);
  EXPECT_EQ(b->color, (std::array<float, 3>{1, 1, 1}));
}

TEST_F(BindTest, LineWidthAndPointSizeStacksTalkToGl) {
  QV_REQUIRE_GL();
  GLfloat value = 0;
  glGetFloatv(GL_POINT_SIZE, &value);
  EXPECT_EQ(value, 4.0f) << "a new bind sets points of 4 pixels";
  glGetFloatv(GL_LINE_WIDTH, &value);
  EXPECT_EQ(value, 2.0f) << "and lines of 2 pixels";

  bind__push_load_line_width(b, 5.0);
  bind__push_load_point_size(b, 7.0);
  glGetFloatv(GL_LINE_WIDTH, &value);
  EXPECT_EQ(value, 5.0f);
  bind__pop_point_size(b);
  bind__pop_line_width(b);
  glGetFloatv(GL_LINE_WIDTH, &value);
  EXPECT_EQ(value, 2.0f);
  glGetFloatv(GL_POINT_SIZE, &value);
  EXPECT_EQ(value, 4.0f);
}

TEST_F(BindTest, PixelModesMakeOneUnitOnePixel) {
  QV_REQUIRE_GL();
  const auto pixels_of_unit_x = [&] {
    const mat4d& mvs = b->mvs();
    return std::hypot(mvs.m[0], mvs.m[1], mvs.m[2]);
  };
  b->push_product(disp::uniform_scale(3));
  bind__push_pixel_mode(b);
  EXPECT_NEAR(pixels_of_unit_x(), 3.0, 1e-9) << "pixel mode keeps the model's own scale";
  mat_stack__pop(b);

  bind__push_no_rotation_pixel_mode(b);
  const mat4d mvs = b->mvs();
  expect_near(mvs, disp::translation(mvs.m[12], mvs.m[13], mvs.m[14]));
  const geom::vec3d origin = (disp::translation(1, 2, 3) * turn_z_90() * panel_scale()).apply({0, 0, 0});
  EXPECT_NEAR(mvs.m[12], origin.x, 1e-9);
  EXPECT_NEAR(mvs.m[13], origin.y, 1e-9);
  mat_stack__pop(b);

  bind__push_covering_pixel_mode(b);
  const geom::vec3d centre = b->mvs().apply({0, 0, 0});
  EXPECT_NEAR(centre.x, 0, 1e-9);
  EXPECT_NEAR(centre.y, 0, 1e-9);
  EXPECT_NEAR(centre.z, (depth - 1) / 2, 1e-6) << "in front of everything";
  EXPECT_NEAR(pixels_of_unit_x(), 1.0, 1e-12);
  mat_stack__pop(b);
}

TEST(BindBoundary, NullArgumentsAreRefused) {
  const mat4d m = mat4d::identity();
  EXPECT_EQ(bind__new(nullptr, &m, &m, &m, 0, 1, 1), nullptr);
  bind__delete(nullptr);
  mat_stack__push(nullptr);
  EXPECT_EQ(bind__getMvpBoxRelation(nullptr, nullptr, 1.0), 0);
  EXPECT_EQ(bind__get_proj_depth(nullptr), 0.0);
}

TEST(PoseMath, InverseUndoesAPoseAndFlagsASingularOne) {
  const mat4d pose = disp::translation(1, -2, 3) * turn_z_90() * disp::uniform_scale(4);
  expect_near(pose * disp::inverse(pose), mat4d::identity(), 1e-12);
  const mat4d proj = {{0.5, 0, 0, 0, 0, 2, 0, 0, 0, 0, -3, -1, 0, 0, 7, 0}};
  expect_near(disp::inverse(proj) * proj, mat4d::identity(), 1e-12);
  EXPECT_TRUE(std::isnan(disp::inverse(disp::uniform_scale(0)).m[0]));
  EXPECT_DOUBLE_EQ(disp::det3(pose), 64.0);
}

}  // namespace
