// Vertex drawings as a host and the library's own displayables use them:
// each rail reaches the colour and id attachments with what its vertices and
// the render state say, boxes are read back from the GPU, and drawings can
// be made and dropped on threads without a context.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include "disp/CoordinateDrawing.h"
#include "disp/Drawing.h"
#include "disp/bind.h"
#include "disp/disp_torch.h"
#include "disp/drawing.h"
#include "disp/hsl.h"
#include "gl_test_support.h"
#include "pick_target.h"

namespace {

constexpr int side = 16;
// The lit programs' diffuse light direction: a normal along it gets full
// diffuse light plus the ambient 0.04.
constexpr double light[3] = {0.21264139, 0.020298656, 0.9769195};
constexpr std::array<double, 3> base = {0.5, 0.25, 0.75};
constexpr std::uint32_t vertex_id = 4194305;
constexpr std::int32_t bind_id = 77;

class DrawingTest : public disp_test::gl_bind_test {
 protected:
  DrawingTest() : gl_bind_test(side, bind_id) {}
};

// A triangle over the whole target in the layout of kind: pick, colour,
// normal, position, each present or not.
std::vector<double> covering_triangle(std::uint32_t kind) {
  const bool pick = kind >= 4, colour = kind & 2, normal = kind & 1;
  const double corners[3][2] = {{-1, -1}, {3, -1}, {-1, 3}};
  std::vector<double> out;
  for (const auto& c : corners) {
    if (pick) out.push_back(vertex_id);
    if (colour) out.insert(out.end(), base.begin(), base.end());
    if (normal) out.insert(out.end(), light, light + 3);
    out.insert(out.end(), {c[0], c[1], 0.0});
  }
  return out;
}

// The boundary leaves the object itself to its maker; the tests free it.
void free_object(drawing_t* d, std::uint32_t kind) {
  disp::with_rail_kind(kind, [d](auto rail) { delete static_cast<disp::drawing_t<decltype(rail)>*>(d); });
}

void expect_colour_near(const std::array<int, 3>& got, const std::array<double, 3>& want) {
  for (int i = 0; i < 3; ++i) EXPECT_NEAR(got[i], std::lround(want[i] * 255), 2) << "channel " << i;
}

TEST_F(DrawingTest, EveryKindWritesItsColourAndId) {
  QV_REQUIRE_GL();
  ASSERT_TRUE(target->complete);
  b->color = {0.5f, 0.25f, 0.75f};
  for (std::uint32_t kind = 0; kind < 8; ++kind) {
    SCOPED_TRACE(kind);
    target->clear();
    const std::vector<double> data = covering_triangle(kind);
    drawing_t* d = drawing__new(data.data(), static_cast<int32_t>(data.size()), kind);
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(d->vertex_count, 3u);
    drawing__display(d, kind, b.get(), GL_TRIANGLES);
    const double k = (kind & 1) ? 1.04 : 1.0;
    expect_colour_near(target->colour(), {base[0] * k, base[1] * k, base[2] * k});
    EXPECT_EQ(target->id(), kind >= 4 ? vertex_id : static_cast<std::uint32_t>(bind_id));
    drawing__delete(d, kind);
    EXPECT_EQ(d->vbo, 0u);
    EXPECT_EQ(d->vertex_count, 0u);
    free_object(d, kind);
  }
}

TEST_F(DrawingTest, BadKindsAndModesDrawNothing) {
  QV_REQUIRE_GL();
  const std::vector<double> data = covering_triangle(0);
  EXPECT_EQ(drawing__new(data.data(), 9, 8), nullptr);
  EXPECT_EQ(drawing__new(data.data(), -1, 0), nullptr);
  EXPECT_EQ(drawing__new(nullptr, 9, 0), nullptr);
  for (const std::uint32_t kind : {6u, 7u}) {
    const std::vector<double> typed = covering_triangle(kind);
    drawing_t* made = drawing__new(typed.data(), static_cast<int32_t>(typed.size()), kind);
    drawing__display(made, kind, b.get(), 10);
    drawing__display(made, 8, b.get(), GL_TRIANGLES);
    drawing__display(made, kind, nullptr, GL_TRIANGLES);
    drawing__delete(made, 8);
    EXPECT_NE(made->vbo, 0u) << "a bad kind leaves the drawing alone";
    drawing__delete(made, kind);
    free_object(made, kind);
  }
  drawing__delete(nullptr, 0);
  EXPECT_EQ(target->id(), 0xFFFFFFFFu);
}

TEST_F(DrawingTest, BoxIsReadBackOverWholeVerticesOnly) {
  QV_REQUIRE_GL();
  // Two whole vertices of kind 5 and four doubles of a third.
  const std::vector<double> data = {1, 0, 0, 1, -2, 5, 3, 2, 0, 0, 1, 4, -1, 0.5, 9, 0, 0, 1};
  drawing_t* d = drawing__new(data.data(), static_cast<int32_t>(data.size()), 5);
  ASSERT_NE(d, nullptr);
  EXPECT_EQ(d->vertex_count, 2u);
  std::array<double, 6> box{};
  drawing__get_box3d(d, 5, box.data());
  EXPECT_EQ(box, (std::array<double, 6>{-2, -1, 0.5, 4, 5, 3}));
  drawing__delete(d, 5);

  drawing_t* empty = drawing__new(nullptr, 0, 0);
  drawing__get_box3d(empty, 0, box.data());
  const double inf = std::numeric_limits<double>::infinity();
  EXPECT_EQ(box, (std::array<double, 6>{inf, inf, inf, -inf, -inf, -inf}));
  drawing__delete(empty, 0);
  free_object(d, 5);
  free_object(empty, 0);
}

TEST(DrawingThreads, ADrawingIsMadeMeasuredAndDroppedWithoutAContextOfItsOwn) {
  QV_REQUIRE_GL();
  std::unique_ptr<disp::line_drawing_t> made;
  const double points[6] = {0, 0, 0, 2, -1, 3};
  disp_test::on_new_thread([&] { made = std::make_unique<disp::line_drawing_t>(points, 6); });
  geom::box3d box;
  disp_test::on_new_thread([&] { made->expand_to_box3d(&box); });
  EXPECT_EQ(box.v, (std::array<double, 6>{0, -1, 0, 2, 0, 3}));
  const geom::mat4d shift = {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 10, 0, 0, 1}};
  geom::box3d moved;
  made->expand_to_box3d(&moved, &shift);
  EXPECT_EQ(moved.v, (std::array<double, 6>{10, -1, 0, 12, 0, 3}));
  disp_test::on_new_thread([&] { made.reset(); });
}

TEST(CrossColour, SaturationRisesAndGreyStaysGrey) {
  const disp::rgb_t grey = {0.5f, 0.5f, 0.5f};
  EXPECT_EQ(disp::more_saturated(grey, 0.4), grey);
  const disp::hsl_t before = disp::to_hsl({0.6f, 0.4f, 0.4f});
  const disp::hsl_t after = disp::to_hsl(disp::more_saturated({0.6f, 0.4f, 0.4f}, 0.4));
  EXPECT_NEAR(after.h, before.h, 1e-6);
  EXPECT_NEAR(after.l, before.l, 1e-6);
  EXPECT_NEAR(after.s, before.s + 0.4, 1e-6);
  EXPECT_NEAR(disp::to_hsl(disp::more_saturated({0.9f, 0.1f, 0.5f}, 0.4)).s, 1.0, 1e-6);
}

TEST_F(DrawingTest, CrossesShareTheirDrawingsAndDrawTheSaturatedColour) {
  QV_REQUIRE_GL();
  const std::uint64_t builds = disp::CoordinateDrawing::shared_builds();
  auto first = std::make_unique<disp::CoordinateDrawing>(0.5);
  auto second = std::make_unique<disp::CoordinateDrawing>(0.5);
  EXPECT_EQ(disp::CoordinateDrawing::shared_builds(), builds + 1);

  b->color = {0.6f, 0.4f, 0.4f};
  second->display(b.get());
  EXPECT_EQ(b->color, (disp::rgb_t{0.6f, 0.4f, 0.4f})) << "the colour is restored";
  const disp::rgb_t c = disp::more_saturated({0.6f, 0.4f, 0.4f}, 0.4);
  // Along the x axis, a quarter of the target from the centre.
  expect_colour_near(target->colour(side * 3 / 4, side / 2), {c[0], c[1], c[2]});
  EXPECT_EQ(target->id(side * 3 / 4, side / 2), static_cast<std::uint32_t>(bind_id));
  EXPECT_EQ(target->id(side / 4, side / 4), 0xFFFFFFFFu) << "nothing off the axes";

  first.reset();
  second.reset();
  disp::CoordinateDrawing third(0.5);
  EXPECT_EQ(disp::CoordinateDrawing::shared_builds(), builds + 2);
}

}  // namespace
