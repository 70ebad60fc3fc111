// Meshes, tool volumes and step results on screen, through the calls a
// host's display callback makes: what lands in the colour and id
// attachments, and that null and empty objects draw nothing.

#include <gtest/gtest.h>

#include <memory>

#include "cbtr/cached_tris.h"
#include "cbtr/step/step_result_t.h"
#include "cbtr/substraction.h"
#include "cbtr/tool/cached_tris_t.h"
#include "disp/bind.h"
#include "disp/disp_torch.h"
#include "disp/drawing.h"
#include "geom/topo/topo_stl3.h"
#include "geom/topo_stl3d.h"
#include "gl_test_support.h"
#include "pick_target.h"
#include "soups.h"

namespace {

constexpr int side = 16;
constexpr std::int32_t bind_id = 31;
constexpr std::uint32_t cleared = 0xFFFFFFFFu;
// The centre of pixel column or row i, in clip units.
constexpr double at_pixel(int i) { return (i + 0.5) / (side / 2.0) - 1.0; }
const double a = at_pixel(side - 5);  // 0.4375: pixels 4 and 11 lie on -a and a

class DisplayeeTest : public disp_test::gl_bind_test {
 protected:
  DisplayeeTest() : gl_bind_test(side, bind_id) {}
  void SetUp() override {
    gl_bind_test::SetUp();
    if (b) b->color = {0.8f, 0.6f, 0.2f};
  }

  bool drew_anything() const {
    for (int y = 0; y < side; ++y)
      for (int x = 0; x < side; ++x)
        if (target->id(x, y) != cleared) return true;
    return false;
  }
};

std::unique_ptr<topo_stl3d, void (*)(topo_stl3d*)> cube_mesh(double h) {
  const std::vector<geom::stl_tri_t> soup = quvra_test::box_soup(-h, -h, -h, h, h, h);
  return {topo_stl3d__ctor(static_cast<int32_t>(soup.size()), reinterpret_cast<const double*>(soup.data())),
          topo_stl3d__delete};
}

TEST_F(DisplayeeTest, AMeshShowsItsLitFacesAndItsEdgesWithoutDiagonals) {
  QV_REQUIRE_GL();
  auto cube = cube_mesh(a);
  topo_stl3d__render_edges(cube.get(), b.get());
  EXPECT_EQ(target->id(4, 10), static_cast<std::uint32_t>(bind_id)) << "the left edge";
  EXPECT_EQ(target->id(8, 7), cleared) << "no face diagonal";

  Displayee__Render(cube.get(), b.get());
  const std::array<int, 3> c = target->colour();
  EXPECT_GT(c[0], c[1]);
  EXPECT_GT(c[1], c[2]);
  EXPECT_GT(c[2], 0);
  EXPECT_EQ(target->id(), static_cast<std::uint32_t>(bind_id));
}

TEST_F(DisplayeeTest, NullAndEmptyObjectsDrawNothing) {
  QV_REQUIRE_GL();
  topo_stl3d__render(nullptr, b.get());
  topo_stl3d__render_edges(nullptr, b.get());
  Displayee__Render(nullptr, b.get());
  substraction_Render(nullptr, b.get());
  addition_Render(nullptr, b.get());
  std::unique_ptr<topo_stl3d, void (*)(topo_stl3d*)> empty(topo_stl3d__ctor(0, nullptr), topo_stl3d__delete);
  topo_stl3d__render(empty.get(), b.get());
  cbtr::substraction_t no_contours(8, false, {});
  substraction_Render(&no_contours, b.get());
  EXPECT_FALSE(drew_anything());
}

TEST_F(DisplayeeTest, ContoursAreDrawnAsClosedPolygons) {
  QV_REQUIRE_GL();
  // The closing side runs from the last point back down column 4.
  cbtr::addition_t result(8, true, {{{-a, -a, 0}, {a, -a, 0}, {-a, a, 0}}});
  addition_Render(&result, b.get());
  EXPECT_EQ(target->id(4, 8), static_cast<std::uint32_t>(bind_id)) << "the closing side";
  EXPECT_EQ(target->id(8, 4), static_cast<std::uint32_t>(bind_id)) << "the first side";
  EXPECT_EQ(target->id(10, 10), cleared) << "lines, not a filled polygon";
}

TEST_F(DisplayeeTest, AToolVolumeDrawsItsFacesAndKnowsItsBox) {
  QV_REQUIRE_GL();
  auto cube = cube_mesh(0.5);
  const double pose[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
  std::unique_ptr<cached_tris_t, void (*)(cached_tris_t*)> tool(new_stationary_cached_tris(cube.get(), pose, 1.0 / 64),
                                                                delete_cached_tris);
  ASSERT_NE(tool, nullptr);
  Displayee__Render(tool.get(), b.get());
  EXPECT_EQ(target->id(), static_cast<std::uint32_t>(bind_id));
  EXPECT_GT(target->colour()[0], 0);
  std::array<double, 6> box = {1e300, 1e300, 1e300, -1e300, -1e300, -1e300};
  Displayee__ExpandToBox3d(tool.get(), box.data());
  EXPECT_EQ(box, (std::array<double, 6>{-0.5, -0.5, -0.5, 0.5, 0.5, 0.5}));
}

}  // namespace
