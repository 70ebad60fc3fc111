// Collision of rigid bodies as a host asks for it: triangle trees against
// each other and against a stock, under random rigid poses.

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "cbtr/collision.h"
#include "hand_trees.h"
#include "soups.h"
#include "step_stock.h"

namespace {

using quvra_test::soup_t;
using mat = std::array<double, 16>;
using point = std::array<double, 3>;

point moved_point(const mat& m, const point& p) {
  return {m[0] * p[0] + m[4] * p[1] + m[8] * p[2] + m[12], m[1] * p[0] + m[5] * p[1] + m[9] * p[2] + m[13],
          m[2] * p[0] + m[6] * p[1] + m[10] * p[2] + m[14]};
}

// b after a.
mat then(const mat& a, const mat& b) {
  mat out{};
  for (int c = 0; c < 4; ++c)
    for (int r = 0; r < 4; ++r)
      for (int k = 0; k < 4; ++k) out[4 * c + r] += b[4 * k + r] * a[4 * c + k];
  return out;
}

mat rigid_inverse(const mat& m) {
  mat out{};
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 3; ++c) out[4 * c + r] = m[4 * r + c];
  for (int r = 0; r < 3; ++r) out[12 + r] = -(out[r] * m[12] + out[4 + r] * m[13] + out[8 + r] * m[14]);
  out[15] = 1;
  return out;
}

const mat identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

mat random_pose(std::mt19937& rng) {
  std::normal_distribution<double> g;
  std::uniform_real_distribution<double> u(-40, 40);
  double q[4] = {g(rng), g(rng), g(rng), g(rng)};
  const double len = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
  for (double& x : q) x /= len;
  const double w = q[0], x = q[1], y = q[2], z = q[3];
  return {1 - 2 * (y * y + z * z), 2 * (x * y + w * z),     2 * (x * z - w * y),     0,
          2 * (x * y - w * z),     1 - 2 * (x * x + z * z), 2 * (y * z + w * x),     0,
          2 * (x * z + w * y),     2 * (y * z - w * x),     1 - 2 * (x * x + y * y), 0,
          u(rng),                  u(rng),                  u(rng),                  1};
}

// A body given in world coordinates, held in its own frame under pose.
struct body_t {
  soup_t soup;
  tri_tree_t* tree;
  body_t(std::vector<geom::stl_tri_t> tris, const mat& pose) : soup(moved(std::move(tris), rigid_inverse(pose))) {
    tree = tri_tree__new(soup.s);
  }
  ~body_t() { tri_tree__delete(tree); }
  static std::vector<geom::stl_tri_t> moved(std::vector<geom::stl_tri_t> tris, const mat& m) {
    for (auto& t : tris) t.a = moved_point(m, t.a), t.b = moved_point(m, t.b), t.c = moved_point(m, t.c);
    return tris;
  }
};

struct pair_case_t {
  const char* name;
  std::array<double, 6> b;  // box B in world coordinates; A is the unit cube
  double gap;               // true distance; negative for overlap, 0 touching
};

const pair_case_t cases[] = {
    {"touching", {1, 0.2, 0.3, 2, 0.8, 0.7}, 0},
    {"edge on face", {0.5, 0.5, 1, 1.5, 1.5, 2}, 0},
    {"apart by 0.1", {1.1, 0.2, 0.3, 2, 0.8, 0.7}, 0.1},
    {"overlapping", {0.5, 0.5, 0.5, 1.5, 1.5, 1.5}, -1},
    {"apart by 9", {10, 0, 0, 11, 1, 1}, 9},
};

TEST(TriTreeCollision, FlagsAndDistanceBoundsHoldForKnownPairsUnderRandomPoses) {
  std::mt19937 rng(7);
  for (int trial = 0; trial < 12; ++trial) {
    const mat pa = random_pose(rng), pb = trial == 0 ? pa : random_pose(rng);
    body_t a(quvra_test::box_soup(0, 0, 0, 1, 1, 1), pa);
    for (const pair_case_t& c : cases) {
      body_t b(quvra_test::box_soup(c.b[0], c.b[1], c.b[2], c.b[3], c.b[4], c.b[5]), pb);
      const mat b_to_a = then(pb, rigid_inverse(pa));
      const int32_t tight = tri_tree__get_collision_flag_by_tri_tree_vs_tri_tree(a.tree, b.tree, b_to_a.data(), 0, 0);
      const int32_t wide = tri_tree__get_collision_flag_by_tri_tree_vs_tri_tree(a.tree, b.tree, b_to_a.data(), 20, 64);
      const double bound = tri_tree__get_at_least_distance(a.tree, b.tree, b_to_a.data(), 0);
      SCOPED_TRACE(c.name);
      if (c.gap <= 0) {
        EXPECT_EQ(tight, 0);
        EXPECT_EQ(wide, 0);
        EXPECT_EQ(bound, -INFINITY);
      } else {
        EXPECT_EQ(tight, c.gap < 1 ? 1 : 2);
        EXPECT_EQ(wide, 1);
        EXPECT_GE(bound, 0);
        EXPECT_LE(bound, c.gap);
      }
    }
  }
}

TEST(TriTreeCollision, IdenticalBodiesCollideAndAnEmptyBodyIsOnlyNear) {
  body_t a(quvra_test::sphere_soup(3, 12, 16), identity);
  body_t b(quvra_test::sphere_soup(3, 12, 16), identity);
  body_t none({}, identity);
  EXPECT_EQ(tri_tree__get_collision_flag_by_tri_tree_vs_tri_tree(a.tree, b.tree, identity.data(), 0, 0), 0);
  EXPECT_EQ(tri_tree__get_at_least_distance(a.tree, b.tree, identity.data(), 0), -INFINITY);
  EXPECT_EQ(tri_tree__get_collision_flag_by_tri_tree_vs_tri_tree(a.tree, none.tree, identity.data(), 0, 0), 1);
  EXPECT_EQ(tri_tree__get_collision_flag_by_tri_tree_vs_tri_tree(nullptr, b.tree, identity.data(), 0, 0), -1);
  EXPECT_EQ(tri_tree__get_collision_flag_by_tri_tree_vs_tri_tree(a.tree, b.tree, identity.data(), NAN, 0), -1);
  EXPECT_TRUE(std::isnan(tri_tree__get_at_least_distance(a.tree, b.tree, nullptr, 0)));
}

TEST(StockCollision, OnlyBodiesCrossingTheStockSurfaceCollide) {
  quvra_test::stock_t stock({0, 0, 0, 10, 10, 5}, 0.5);
  std::mt19937 rng(11);
  for (int trial = 0; trial < 6; ++trial) {
    const mat pb = random_pose(rng);
    auto flag = [&](const std::array<double, 6>& b, double clearance) {
      body_t body(quvra_test::box_soup(b[0], b[1], b[2], b[3], b[4], b[5]), pb);
      return get_collision_flag_by_cube_tree_and_tri_tree(stock.tree, body.tree, pb.data(), clearance, 0);
    };
    EXPECT_EQ(flag({2, 2, 4.5, 3, 3, 6}, 0), 0);       // through the top face
    EXPECT_EQ(flag({2, 2, 5, 3, 3, 6}, 0), 0);         // resting on it
    EXPECT_EQ(flag({2, 2, 5.1, 3, 3, 6}, 0), 1);       // just above
    EXPECT_NE(flag({2, 2, 2, 3, 3, 3}, 0), 0);         // buried in the solid, 2 from its surface
    EXPECT_EQ(flag({2, 2, 2, 3, 3, 3}, 10), 1);        // ... which is within this clearance
    EXPECT_EQ(flag({2, 2, 40, 3, 3, 41}, 1), 2);       // far above
    EXPECT_EQ(flag({2, 2, 40, 3, 3, 41}, 100), 1);     // far, yet within the clearance
  }
}

TEST(StockCollision, AnEmptyStockIsApartAndAUniformOneHasNoSurfaceToTest) {
  body_t body(quvra_test::box_soup(2, 2, 2, 3, 3, 3), identity);
  const cbtr::cube_tree_t empty(18);
  const auto solid = quvra_test::tree_with_root(18, cbtr::kind_solid, cbtr::corners_all_solid);
  EXPECT_EQ(get_collision_flag_by_cube_tree_and_tri_tree(&empty, body.tree, identity.data(), 0, 0), 2);
  EXPECT_EQ(get_collision_flag_by_cube_tree_and_tri_tree(solid.get(), body.tree, identity.data(), 0, 0), 4);
  EXPECT_EQ(get_collision_flag_by_cube_tree_and_tri_tree(solid.get(), nullptr, identity.data(), 0, 0), -1);
}

// Whether triangle t meets the box, by clipping it with the box's six
// planes: a non-empty remainder is a meeting.
bool clipped_meets(const std::array<point, 3>& t, const std::array<double, 6>& box) {
  std::vector<point> poly(t.begin(), t.end());
  for (int k = 0; k < 6 && !poly.empty(); ++k) {
    const int axis = k % 3;
    const double sign = k < 3 ? 1 : -1, bound = box[k];
    auto inside = [&](const point& p) { return sign * (p[axis] - bound) >= 0; };
    std::vector<point> next;
    for (std::size_t i = 0; i < poly.size(); ++i) {
      const point& p = poly[i];
      const point& q = poly[(i + 1) % poly.size()];
      if (inside(p)) next.push_back(p);
      if (inside(p) != inside(q)) {
        const double s = (bound - p[axis]) / (q[axis] - p[axis]);
        next.push_back({p[0] + s * (q[0] - p[0]), p[1] + s * (q[1] - p[1]), p[2] + s * (q[2] - p[2])});
      }
    }
    poly = std::move(next);
  }
  return !poly.empty();
}

TEST(TriangleBoxTest, AgreesWithClippingOnRandomTriangles) {
  std::mt19937 rng(3);
  std::uniform_real_distribution<double> u(-1.5, 2.5);
  const std::array<double, 6> box = {0, 0, 0, 1, 1, 1};
  int meets = 0;
  for (int i = 0; i < 20000; ++i) {
    double rec[12] = {};
    for (int k = 0; k < 9; ++k) rec[k] = u(rng);
    tri_sat_t sat;
    tri_sat__init(&sat, rec);
    const std::array<point, 3> t = {{{rec[0], rec[1], rec[2]}, {rec[3], rec[4], rec[5]}, {rec[6], rec[7], rec[8]}}};
    const bool expected = clipped_meets(t, box);
    meets += expected;
    ASSERT_EQ(is_intersected(&sat, box.data()), expected ? 1 : 0) << "triangle " << i;
  }
  EXPECT_GT(meets, 2000);
  EXPECT_LT(meets, 18000);
}

}  // namespace
