// The five programs as the display builds them: each links, and a triangle
// drawn with it into a framebuffer with a colour and an id attachment leaves
// the colour and the id that its inputs call for.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>

#include "disp/disp_torch.h"
#include "disp/gen_prog.h"
#include "disp/gl.h"
#include "disp/pick_packing.h"
#include "disp/programs.h"
#include "gl_test_support.h"
#include "pick_target.h"

namespace {

constexpr int side = 8;

struct vertex_t {
  float pos[3];
  float normal[3];
  float color[3];
  std::uint32_t pick;
};

struct look_t {
  std::array<float, 3> normal = {0, 0, 1};
  std::array<float, 3> color = {0, 0, 0};
  std::uint32_t pick = 0;
};

// One triangle over the whole target, identity matrices, every attribute the
// program has fed from one buffer.
void draw_triangle(const disp::geometry_program_t& p, const look_t& look) {
  vertex_t v[3] = {};
  const float corners[3][2] = {{-1, -1}, {3, -1}, {-1, 3}};
  for (int i = 0; i < 3; ++i) {
    v[i] = {{corners[i][0], corners[i][1], 0}, {}, {}, look.pick};
    std::copy(look.normal.begin(), look.normal.end(), v[i].normal);
    std::copy(look.color.begin(), look.color.end(), v[i].color);
  }
  GLuint buffer = 0;
  glGenBuffers(1, &buffer);
  glBindBuffer(GL_ARRAY_BUFFER, buffer);
  glBufferData(GL_ARRAY_BUFFER, sizeof v, v, GL_STREAM_DRAW);
  const auto at = [](std::size_t offset) { return reinterpret_cast<const void*>(offset); };
  const auto attrib = [&](GLint loc, std::size_t offset) {
    if (loc < 0) return;
    glEnableVertexAttribArray(static_cast<GLuint>(loc));
    glVertexAttribPointer(static_cast<GLuint>(loc), 3, GL_FLOAT, GL_FALSE, sizeof(vertex_t), at(offset));
  };
  attrib(p.pos, offsetof(vertex_t, pos));
  attrib(p.normal, offsetof(vertex_t, normal));
  attrib(p.color, offsetof(vertex_t, color));
  glEnableVertexAttribArray(static_cast<GLuint>(p.pick));
  glVertexAttribIPointer(static_cast<GLuint>(p.pick), 1, GL_UNSIGNED_INT, sizeof(vertex_t),
                         at(offsetof(vertex_t, pick)));
  const float identity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
  glUniformMatrix4fv(p.mvp, 1, GL_FALSE, identity);
  glUniformMatrix4fv(p.mv, 1, GL_FALSE, identity);
  glDrawArrays(GL_TRIANGLES, 0, 3);
  for (const GLint loc : {p.pos, p.normal, p.color, p.pick})
    if (loc >= 0) glDisableVertexAttribArray(static_cast<GLuint>(loc));
  glBindBuffer(GL_ARRAY_BUFFER, 0);
  glDeleteBuffers(1, &buffer);
}

std::array<int, 3> bytes_of(std::array<double, 3> c) {
  return {static_cast<int>(std::lround(c[0] * 255)), static_cast<int>(std::lround(c[1] * 255)),
          static_cast<int>(std::lround(c[2] * 255))};
}

void expect_colour_near(const std::array<int, 3>& got, const std::array<double, 3>& want) {
  const auto w = bytes_of(want);
  for (int i = 0; i < 3; ++i) EXPECT_NEAR(got[i], w[i], 2) << "channel " << i;
}

// Unit normals at a given angle from the fixed diffuse light direction.
std::array<float, 3> normal_at_degrees(double degrees) {
  const double l[3] = {0.21264139, 0.020298656, 0.9769195};
  // A unit vector at a right angle to l: l x (1, 0, 0), normalised.
  double p[3] = {0, l[2], -l[1]};
  const double n = std::hypot(p[1], p[2]);
  p[1] /= n;
  p[2] /= n;
  const double a = degrees * M_PI / 180;
  return {static_cast<float>(std::cos(a) * l[0] + std::sin(a) * p[0]),
          static_cast<float>(std::cos(a) * l[1] + std::sin(a) * p[1]),
          static_cast<float>(std::cos(a) * l[2] + std::sin(a) * p[2])};
}

class ProgramsTest : public disp_test::gl_target_test {
 protected:
  ProgramsTest() : gl_target_test(side) {}
  void TearDown() override {
    if (target) glUseProgram(0);
    gl_target_test::TearDown();
  }

  bool has_context() const { return target != nullptr; }
};

TEST_F(ProgramsTest, AllFiveAreBuiltAndLinked) {
  QV_REQUIRE_GL();
  ASSERT_TRUE(target->complete);
  const auto& set = disp::programs();
  for (const GLuint id : {set.flat.id, set.lit.id, set.colored.id, set.colored_lit.id, set.text.id}) {
    ASSERT_NE(id, disp::unset_program);
    GLint linked = GL_FALSE;
    glGetProgramiv(id, GL_LINK_STATUS, &linked);
    EXPECT_TRUE(linked) << "program " << id;
  }
  EXPECT_GE(set.lit.normal, 0);
  EXPECT_GE(set.colored_lit.color_table, 0);
  EXPECT_GE(set.text.texCoordinate, 0);
  EXPECT_EQ(set.flat.mv, -1) << "flat declares no mv";
}

TEST_F(ProgramsTest, FlatWritesItsColourAndTheUniformOrVertexId) {
  QV_REQUIRE_GL();
  const auto& p = disp::programs().flat;
  glUseProgram(p.id);
  glUniform3f(p.uniColor, 1.0f, 0.5f, 0.0f);
  glUniform1i(p.use_vertex_pick, 0);
  glUniform1i(p.picking_id, 77);
  draw_triangle(p, {.pick = 1234});
  expect_colour_near(target->colour(), {1.0, 0.5, 0.0});
  EXPECT_EQ(target->id(), 77u);

  glUniform1i(p.use_vertex_pick, 1);
  draw_triangle(p, {.pick = 1234});
  EXPECT_EQ(target->id(), 1234u);
}

TEST_F(ProgramsTest, LitFallsLinearlyWithTheAngleToTheLightDownToAmbient) {
  QV_REQUIRE_GL();
  const auto& p = disp::programs().lit;
  const std::array<double, 3> base = {0.6, 0.3, 0.9};
  glUseProgram(p.id);
  glUniform3f(p.uniColor, 0.6f, 0.3f, 0.9f);
  glUniform1f(p.specular_rate, 0.0f);
  glUniform1i(p.use_vertex_pick, 0);
  glUniform1i(p.picking_id, 5);
  const std::pair<double, double> cases[] = {{60.0, 1.0 / 3.0}, {90.0, 0.0}, {135.0, 0.0}};
  for (const auto& [degrees, diffuse] : cases) {
    draw_triangle(p, {.normal = normal_at_degrees(degrees)});
    const double k = diffuse + 0.04;
    expect_colour_near(target->colour(), {base[0] * k, base[1] * k, base[2] * k});
  }
  EXPECT_EQ(target->id(), 5u);
}

class ColourTableTest : public ProgramsTest {
 protected:
  // Four slots; slot 2 is alive at generation 2 with blue.
  void bind_table(GLint sampler, GLint size_uniform) {
    const float texels[4][4] = {{0, 0, 0, 0}, {1, 1, 1, 0}, {0, 0, 1, 3}, {1, 0, 0, 0}};
    glGenBuffers(1, &_buffer);
    glBindBuffer(GL_TEXTURE_BUFFER, _buffer);
    glBufferData(GL_TEXTURE_BUFFER, sizeof texels, texels, GL_STATIC_DRAW);
    glGenTextures(1, &_texture);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_BUFFER, _texture);
    glTexBuffer(GL_TEXTURE_BUFFER, GL_RGBA32F, _buffer);
    glUniform1i(sampler, 0);
    glUniform1i(size_uniform, 4);
  }
  void TearDown() override {
    if (!has_context()) return;
    glBindTexture(GL_TEXTURE_BUFFER, 0);
    glBindBuffer(GL_TEXTURE_BUFFER, 0);
    glDeleteTextures(1, &_texture);
    glDeleteBuffers(1, &_buffer);
    ProgramsTest::TearDown();
  }

  static std::uint32_t id_of(std::uint32_t generation, std::uint32_t slot) {
    return generation << disp::pick_generation_shift | slot;
  }

 private:
  GLuint _buffer = 0, _texture = 0;
};

TEST_F(ColourTableTest, ColoredTakesTheTableColourOnlyForALiveId) {
  QV_REQUIRE_GL();
  const auto& p = disp::programs().colored;
  glUseProgram(p.id);
  bind_table(p.color_table, p.color_table_size);
  glUniform1i(p.use_vertex_pick, 1);
  const std::array<float, 3> baked = {0.0f, 1.0f, 0.0f};

  draw_triangle(p, {.color = baked, .pick = id_of(2, 2)});
  expect_colour_near(target->colour(), {0, 0, 1});
  EXPECT_EQ(target->id(), id_of(2, 2));

  for (const std::uint32_t stale : {id_of(1, 2), id_of(0, 5), id_of(0, 1), 0u}) {
    draw_triangle(p, {.color = baked, .pick = stale});
    expect_colour_near(target->colour(), {0, 1, 0});
    EXPECT_EQ(target->id(), stale);
  }

  glUniform1i(p.use_vertex_pick, 0);
  glUniform1i(p.picking_id, 9);
  draw_triangle(p, {.color = baked, .pick = id_of(2, 2)});
  expect_colour_near(target->colour(), {0, 1, 0});
  EXPECT_EQ(target->id(), 9u);
}

TEST_F(ColourTableTest, ColoredLitLightsTheTableColour) {
  QV_REQUIRE_GL();
  const auto& p = disp::programs().colored_lit;
  glUseProgram(p.id);
  bind_table(p.color_table, p.color_table_size);
  glUniform1f(p.specular_rate, 0.0f);
  glUniform1i(p.use_vertex_pick, 1);
  const double k = 1.0 / 3.0 + 0.04;
  draw_triangle(p, {.normal = normal_at_degrees(60), .color = {1, 1, 0}, .pick = id_of(2, 2)});
  expect_colour_near(target->colour(), {0, 0, k});
  draw_triangle(p, {.normal = normal_at_degrees(60), .color = {1, 1, 0}, .pick = id_of(1, 2)});
  expect_colour_near(target->colour(), {k, k, 0});
  EXPECT_EQ(target->id(), id_of(1, 2));
}

TEST_F(ProgramsTest, TextMultipliesItsTextureByTheColourAndWritesTheUniformId) {
  QV_REQUIRE_GL();
  const auto& p = disp::programs().text;
  GLuint texture = 0;
  const std::uint8_t texel[4] = {200, 100, 50, 255};
  glGenTextures(1, &texture);
  glActiveTexture(GL_TEXTURE0);
  glBindTexture(GL_TEXTURE_2D, texture);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, texel);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);

  // A quad of the panel's size in pixels, as text quads are given: x, y, u, v
  // as integers.
  const GLint quad[4][4] = {{0, 0, 0, 1}, {side, 0, 1, 1}, {side, side, 1, 0}, {0, side, 0, 0}};
  GLuint buffer = 0;
  glGenBuffers(1, &buffer);
  glBindBuffer(GL_ARRAY_BUFFER, buffer);
  glBufferData(GL_ARRAY_BUFFER, sizeof quad, quad, GL_STREAM_DRAW);
  glUseProgram(p.id);
  const float to_clip[16] = {2.0f / side, 0, 0, 0, 0, 2.0f / side, 0, 0, 0, 0, -0.5f, 0, 0, 0, 0, 1};
  glUniformMatrix4fv(p.proj, 1, GL_FALSE, to_clip);
  glUniform3f(p.p0, -side / 2.0f, -side / 2.0f, 0.0f);
  glUniform4f(p.uniColor, 1.0f, 0.5f, 1.0f, 1.0f);
  glUniform1i(p.sampler, 0);
  glUniform1i(p.picking_id, 4242);
  glEnableVertexAttribArray(static_cast<GLuint>(p.pos));
  glEnableVertexAttribArray(static_cast<GLuint>(p.texCoordinate));
  glVertexAttribPointer(static_cast<GLuint>(p.pos), 2, GL_INT, GL_FALSE, 16, nullptr);
  glVertexAttribPointer(static_cast<GLuint>(p.texCoordinate), 2, GL_INT, GL_FALSE, 16,
                        reinterpret_cast<const void*>(8));
  glDrawArrays(GL_TRIANGLE_FAN, 0, 4);
  glDisableVertexAttribArray(static_cast<GLuint>(p.pos));
  glDisableVertexAttribArray(static_cast<GLuint>(p.texCoordinate));
  glBindBuffer(GL_ARRAY_BUFFER, 0);
  glDeleteBuffers(1, &buffer);
  glBindTexture(GL_TEXTURE_2D, 0);
  glDeleteTextures(1, &texture);

  expect_colour_near(target->colour(), {200 / 255.0, 50 / 255.0, 50 / 255.0});
  EXPECT_EQ(target->id(), 4242u);
}

TEST_F(ProgramsTest, AProgramThatFailsToBuildIsLoggedAndSurvived) {
  QV_REQUIRE_GL();
  disp_test::clear_log();
  const GLuint id = disp::_gen_prog("#version 330\nvoid main() { not glsl }\n",
                                    "#version 330\nout vec4 f; void main() { f = vec4(1); }\n");
  EXPECT_NE(id, 0u);
  // Driver messages about the same failure may come in between.
  const auto lines = disp_test::log_lines();
  const auto starts = [&](const std::string& prefix) {
    return std::count_if(lines.begin(), lines.end(), [&](const std::string& l) { return l.rfind(prefix, 0) == 0; });
  };
  EXPECT_EQ(starts("_gen_prog: vertex shader FAILED to compile: 0:2("), 1);
  EXPECT_EQ(starts("_gen_prog: fragment shader"), 0);
  EXPECT_EQ(starts("_gen_prog: the scene will render EMPTY with this program. Check GL_VERSION / "
                   "GL_SHADING_LANGUAGE_VERSION logged by init_opengl against the #version the "
                   "shader declares."),
            1);
  EXPECT_EQ(glGetUniformLocation(id, "mvp"), -1);
  glDeleteProgram(id);
}

}  // namespace
