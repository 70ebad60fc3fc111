// The first cut of a path by an analytic tool at rest: flat, ball, bull-nose
// and tilted tools plunged into a block, through the boundary.

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "cbtr/step/step_result_t.h"
#include "cbtr/stick_convex.h"
#include "geom/mat4d.h"
#include "step_stock.h"

namespace {

using quvra_test::stock_t;

constexpr double pi = std::numbers::pi;
const std::array<double, 6> block = {0.3, 0.2, 0.1, 10.7, 8.9, 6.35};
constexpr double tip_z = 4.0, depth = 6.35 - tip_z;

stick_convex_t flat_mill(double r) { return {{{cbtr::stick_cylinder, {0, 20, r}}}}; }
stick_convex_t ball_mill(double r) {
  return {{{cbtr::stick_sphere, {0, r, r, r}}, {cbtr::stick_cylinder, {r, 20, r}}}};
}
// Corner radius 1 on a radius 3 tool.
stick_convex_t bull_nose() {
  return {{{cbtr::stick_torus, {0, 1, 2, 1, 1, 2, 3}}, {cbtr::stick_cylinder, {1, 20, 3}}}};
}

geom::mat4d upright_at(double x, double y, double z) {
  geom::mat4d m = geom::mat4d::identity();
  m.m[12] = x, m.m[13] = y, m.m[14] = z;
  return m;
}

struct cut_t {
  bool touched;
  std::uint32_t resolution;
  std::int32_t contour_bytes;
};

cut_t plunge(stock_t& stock, const stick_convex_t& tool, const geom::mat4d& m, double w, bool contours = false) {
  substraction_t* s = cube_tree__substract_by_init_stick_convex(stock.tree, &tool, &m, w, contours, false);
  const cut_t r{substraction__IsTouched(s), s->resolution(), substraction__GetContactContoursBufSize(s)};
  substraction__dtor(s);
  return r;
}

// Cells follow a curved surface to within about their own size; the volume
// they misplace stays below a quarter cell over the cut's area.
void expect_removed(stock_t& stock, double before, double expected, double area, double w) {
  const auto c = stock.closure();
  EXPECT_EQ(c.open_lines, 0u) << "cell " << w;
  EXPECT_NEAR(c.volume_about_origin, c.volume_about_far_point, 1e-6 * before);
  EXPECT_NEAR(before - c.volume_about_origin, expected, 0.25 * w * area) << "cell " << w;
}

// The volume of a solid of revolution of radius r(h) between heights 0
// and top, by Simpson's rule.
template <class Radius>
double revolved_volume(Radius r, double top) {
  constexpr int n = 2000;
  const double step = top / n;
  double sum = 0;
  for (int i = 0; i <= n; ++i) {
    const double weight = (i == 0 || i == n) ? 1 : (i % 2 ? 4 : 2);
    sum += weight * pi * r(i * step) * r(i * step);
  }
  return sum * step / 3;
}

TEST(StickConvex, PlungedToolsRemoveTheirVolumeAndLeaveAClosedStock) {
  const double r = 2.0;
  const double flat = pi * r * r * depth;
  const double ball = 2.0 / 3.0 * pi * r * r * r + pi * r * r * (depth - r);
  const double bull =
      revolved_volume([](double h) { return h < 1 ? 2 + std::sqrt(1 - (h - 1) * (h - 1)) : 3.0; }, depth);
  const struct {
    stick_convex_t tool;
    double volume, area;
  } cases[] = {{flat_mill(r), flat, pi * r * r + 2 * pi * r * depth},
               {ball_mill(r), ball, 2 * pi * r * r + 2 * pi * r * (depth - r)},
               {bull_nose(), bull, 40.0}};
  for (double w : {0.25, 0.125}) {
    for (const auto& c : cases) {
      stock_t stock(block, w);
      const double before = stock.volume();
      const cut_t cut = plunge(stock, c.tool, upright_at(5.3, 4.4, tip_z), w);
      EXPECT_TRUE(cut.touched);
      expect_removed(stock, before, c.volume, c.area, w);
    }
  }
}

TEST(StickConvex, ATiltedToolRemovesItsObliqueTruncation) {
  // Tilted by 30 degrees about x; the block's top face doesn't reach the
  // tool's end disc, so the cut is a cylinder of the axis length at the top.
  const double r = 1.5, w = 0.125, s = 0.5, c = std::sqrt(3.0) / 2;
  geom::mat4d m = upright_at(5.3, 4.4, tip_z);
  m.m[5] = c, m.m[6] = s, m.m[9] = -s, m.m[10] = c;
  stock_t stock(block, w);
  const double before = stock.volume();
  EXPECT_TRUE(plunge(stock, flat_mill(r), m, w).touched);
  expect_removed(stock, before, pi * r * r * depth / c, 2 * pi * r * depth / c + pi * r * r, w);
}

TEST(StickConvex, ANearlyIdentityPlacementCutsAsTheIdentity) {
  const double w = 0.25;
  geom::mat4d almost = upright_at(5.3, 4.4, tip_z);
  for (int i : {0, 5, 10}) almost.m[i] = 0.99999999;
  almost.m[1] = 1e-8;
  stock_t exact(block, w), near(block, w);
  plunge(exact, ball_mill(2.0), upright_at(5.3, 4.4, tip_z), w);
  plunge(near, ball_mill(2.0), almost, w);
  const auto a = cbtr::list_surface(*exact.tree), b = cbtr::list_surface(*near.tree);
  ASSERT_EQ(a.size(), b.size());
  for (std::size_t i = 0; i < a.size(); ++i) EXPECT_EQ(a[i].v, b[i].v);
}

TEST(StickConvex, AFlatEndCutsItsFloorInCellsCoarserThanTheGrid) {
  const double w = 0.0625;
  stock_t stock(block, 1.0);
  plunge(stock, flat_mill(3.0), upright_at(5.3, 4.4, tip_z), w);
  double widest = 0;
  for (const cbtr::cube_tri_t& t : cbtr::list_surface(*stock.tree)) {
    if (t.v[0][2] != tip_z || t.v[1][2] != tip_z || t.v[2][2] != tip_z) continue;
    for (int i = 0; i < 3; ++i) widest = std::max(widest, std::abs(t.v[i][0] - t.v[(i + 1) % 3][0]));
  }
  EXPECT_GE(widest, 8 * w);
  EXPECT_EQ(stock.closure().open_lines, 0u);
}

TEST(StickConvex, ContoursAreTracedWhereTheToolCuts) {
  stock_t stock(block, 0.25);
  const cut_t cut = plunge(stock, ball_mill(2.0), upright_at(5.3, 4.4, tip_z), 0.25, true);
  EXPECT_GT(cut.contour_bytes, 4);
}

TEST(StickConvex, AToolAwayFromTheStockOrWithoutSegmentsChangesNothing) {
  stock_t stock(block, 0.25);
  const double before = stock.volume();
  const cut_t above = plunge(stock, ball_mill(2.0), upright_at(5.3, 4.4, 7.0), 0.25);
  EXPECT_FALSE(above.touched);
  const cut_t empty = plunge(stock, stick_convex_t{}, upright_at(5.3, 4.4, tip_z), 0.25);
  EXPECT_FALSE(empty.touched);
  EXPECT_EQ(empty.resolution, 0u);
  EXPECT_NEAR(stock.volume(), before, 1e-12 * before);
  const geom::mat4d m = upright_at(0, 0, 0);
  const stick_convex_t tool = flat_mill(1.0);
  substraction_t* const refused[] = {
      cube_tree__substract_by_init_stick_convex(nullptr, &tool, &m, 0.25, false, false),
      cube_tree__substract_by_init_stick_convex(stock.tree, nullptr, &m, 0.25, false, false),
      cube_tree__substract_by_init_stick_convex(stock.tree, &tool, nullptr, 0.25, false, false)};
  for (substraction_t* s : refused) {
    EXPECT_FALSE(substraction__IsTouched(s));
    EXPECT_EQ(s->resolution(), 0u);
    substraction__dtor(s);
  }
}

}  // namespace
