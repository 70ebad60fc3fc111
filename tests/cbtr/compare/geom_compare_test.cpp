// The compare of a machined stock with its design part, as a host runs it,
// and the side rules on designs with convex and concave edges and corners.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <mutex>
#include <string>
#include <vector>

#include "cbtr/collision/tri_tree_t.h"
#include "cbtr/compare/distance_probe_t.h"
#include "cbtr/geom_compare.h"
#include "soups.h"
#include "step_stock.h"

namespace {

using point = std::array<double, 3>;
using quvra_test::soup_t;

// Distance from p to triangle abc, by brute force over the face's plane and
// the three edges (no region tests, unlike the library).
double point_triangle_distance(const point& p, const geom::stl_tri_t& t) {
  const point v[3] = {t.a, t.b, t.c};
  auto sub = [](const point& a, const point& b) { return point{a[0] - b[0], a[1] - b[1], a[2] - b[2]}; };
  auto dot = [](const point& a, const point& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; };
  auto cross = [](const point& a, const point& b) {
    return point{a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
  };
  const point n = cross(sub(v[1], v[0]), sub(v[2], v[0]));
  bool inside = true;
  for (int i = 0; i < 3; ++i) inside &= dot(cross(sub(v[(i + 1) % 3], v[i]), sub(p, v[i])), n) >= 0;
  if (inside) return std::abs(dot(sub(p, v[0]), n)) / std::sqrt(dot(n, n));
  double best = INFINITY;
  for (int i = 0; i < 3; ++i) {
    const point d = sub(v[(i + 1) % 3], v[i]), w = sub(p, v[i]);
    const double s = std::clamp(dot(w, d) / dot(d, d), 0.0, 1.0);
    const point e = {w[0] - s * d[0], w[1] - s * d[1], w[2] - s * d[2]};
    best = std::min(best, std::sqrt(dot(e, e)));
  }
  return best;
}

double unsigned_distance(const point& p, const std::vector<geom::stl_tri_t>& design) {
  double best = INFINITY;
  for (const auto& t : design) best = std::min(best, point_triangle_distance(p, t));
  return best;
}

// The design: a 20 x 10 x 10 block with a step taken out above z 6.3 for
// x beyond 9.7. The stock: the block, milled along x above z 6 beyond x 10,
// which leaves 0.3 too much on the step's wall and cuts 0.3 too deep on its
// floor.
constexpr double xs = 9.7, zs = 6.3, w = 0.5;
std::vector<geom::stl_tri_t> design_soup() { return quvra_test::step_block_soup(0, 0, 0, 20, 10, 10, xs, zs); }
bool inside_design(const point& p) {
  const bool in_block = p[0] > 0 && p[0] < 20 && p[1] > 0 && p[1] < 10 && p[2] > 0 && p[2] < 10;
  return in_block && !(p[0] > xs && p[2] > zs);
}

struct measured_t {
  std::array<double, 6> box;
  double distance;
};

struct collector_t {
  std::mutex lock;
  std::vector<measured_t> cells;
  std::vector<std::string> messages;
  std::vector<std::int64_t> denominators;
  std::int64_t last_numerator = -1;

  static void take(std::shared_ptr<cube_node_t>& node, double distance, void* ctx) {
    auto* c = static_cast<collector_t*>(ctx);
    measured_t m{};
    cube_node__get_box(node.get(), m.box.data());
    m.distance = distance;
    std::lock_guard<std::mutex> g(c->lock);
    c->cells.push_back(m);
  }
};

collector_t* progress_sink = nullptr;

void on_progress(const progress_monitor_t* m) {
  char buf[64];
  progress_monitor__get_msg(m, buf, sizeof buf);
  std::lock_guard<std::mutex> g(progress_sink->lock);
  if (progress_sink->messages.empty() || progress_sink->messages.back() != buf) {
    progress_sink->messages.emplace_back(buf);
    progress_sink->denominators.push_back(progress_monitor__get_denominator(m));
  }
  progress_sink->last_numerator = progress_monitor__get_numerator(m);
}

TEST(GeomCompare, MilledStepMeasuresWithinACellOfTheTrueSignedDistance) {
  quvra_test::stock_t stock({0, 0, 0, 20, 10, 10}, w);
  for (double x = 10; x < 20; x += 2.5) stock.cut({x, -1, 6, x + 3, 11, 12}, w);
  const std::vector<geom::stl_tri_t> design = design_soup();
  soup_t soup(design);
  collector_t got;
  progress_sink = &got;
  ASSERT_EQ(geom_compare_with_report_progress_func(stock.tree, soup.s, 2.0, 0.01, collector_t::take, &got,
                                                   on_progress),
            GEOM_COMPARE_OK);
  EXPECT_EQ(got.messages,
            (std::vector<std::string>{"build triangles.", "build searching-tree.", "mesh", "geom compare"}));
  EXPECT_EQ(got.denominators.back(), static_cast<std::int64_t>(got.cells.size()));
  EXPECT_EQ(got.last_numerator, static_cast<std::int64_t>(got.cells.size()));
  EXPECT_EQ(got.cells.size(), stock.leaves());
  int gouges = 0, excess = 0;
  for (const measured_t& c : got.cells) {
    const point centre = {(c.box[0] + c.box[3]) / 2, (c.box[1] + c.box[4]) / 2, (c.box[2] + c.box[5]) / 2};
    EXPECT_NEAR(c.box[3] - c.box[0], w, 1e-12) << "a surface cell above the resolution";
    const double truth = (inside_design(centre) ? -1 : 1) * unsigned_distance(centre, design);
    if (std::isnan(c.distance)) {
      EXPECT_LE(std::abs(truth), w) << centre[0] << " " << centre[1] << " " << centre[2];
      continue;
    }
    EXPECT_NEAR(c.distance, truth, w) << centre[0] << " " << centre[1] << " " << centre[2];
    const bool mid_y = c.box[1] >= 1 && c.box[4] <= 9;
    if (mid_y && c.box[0] >= 11 && c.box[3] <= 19 && c.box[2] <= 6 && c.box[5] >= 6) {
      EXPECT_NEAR(c.distance, -0.3, 2e-3) << "floor";
      ++gouges;
    }
    if (mid_y && c.box[0] <= 10 && c.box[3] >= 10 && c.box[2] >= 7 && c.box[5] <= 9.5) {
      EXPECT_NEAR(c.distance, 0.3, 2e-3) << "wall";
      ++excess;
    }
  }
  EXPECT_GT(gouges, 100);
  EXPECT_GT(excess, 20);
}

TEST(GeomCompare, AStockThatIsItsDesignMeasuresNothingAndArgumentsAreChecked) {
  const std::vector<geom::stl_tri_t> design = design_soup();
  soup_t soup(design);
  cube_tree_t* tree = cube_tree__new(soup.s, w, nullptr, nullptr);
  collector_t got;
  ASSERT_EQ(geom_compare(tree, soup.s, 2.0, 0.01, collector_t::take, &got, nullptr), GEOM_COMPARE_OK);
  ASSERT_FALSE(got.cells.empty());
  for (const measured_t& c : got.cells) EXPECT_TRUE(std::isnan(c.distance));
  const std::size_t before = got.cells.size();
  EXPECT_EQ(geom_compare(tree, nullptr, 2.0, 0.01, collector_t::take, &got, nullptr), GEOM_COMPARE_OK);
  EXPECT_EQ(geom_compare(nullptr, soup.s, 2.0, 0.01, collector_t::take, &got, nullptr),
            GEOM_COMPARE_INVALID_ARGUMENTS);
  EXPECT_EQ(geom_compare(tree, soup.s, 0, 0.01, collector_t::take, &got, nullptr), GEOM_COMPARE_INVALID_ARGUMENTS);
  EXPECT_EQ(geom_compare(tree, soup.s, 2.0, NAN, collector_t::take, &got, nullptr), GEOM_COMPARE_INVALID_ARGUMENTS);
  EXPECT_EQ(geom_compare(tree, soup.s, 2.0, 0.01, nullptr, &got, nullptr), GEOM_COMPARE_INVALID_ARGUMENTS);
  EXPECT_EQ(got.cells.size(), before);
  cube_tree__delete(tree);
}

// The side rules, probed at chosen points of a design with a convex box
// and a concave step.
struct probe_fixture_t {
  std::vector<geom::stl_tri_t> tris;
  geom::stl3d_t soup;
  cbtr::design_t design;
  cbtr::tri_tree_t tree;
  cbtr::distance_probe_t probe;
  explicit probe_fixture_t(std::vector<geom::stl_tri_t> t)
      : tris(std::move(t)), soup(reinterpret_cast<const double*>(tris.data()), tris.size()), design(soup),
        tree(design.soup, {0, 9, 26}), probe(design, tree, 5.0, 0.01) {}
  double at(const point& p) {
    return probe.distance_from({cbtr::snap_to_lattice(p[0]), cbtr::snap_to_lattice(p[1]), cbtr::snap_to_lattice(p[2])});
  }
};

TEST(DistanceSign, FacesEdgesAndCornersOfAClosedDesignAreSigned) {
  probe_fixture_t box(quvra_test::box_soup(0, 0, 0, 4, 4, 4));
  EXPECT_DOUBLE_EQ(box.at({2, 2, 5}), 1);            // above a face
  EXPECT_DOUBLE_EQ(box.at({2, 2, 3.5}), -0.5);       // under it
  EXPECT_DOUBLE_EQ(box.at({5, 2, 5}), std::sqrt(2));  // beyond a convex edge
  EXPECT_DOUBLE_EQ(box.at({5, 5, 5}), std::sqrt(3));  // beyond a corner
  EXPECT_DOUBLE_EQ(box.at({3.5, 2, 3.5}), -0.5);     // inside, two faces tie
  EXPECT_TRUE(std::isnan(box.at({2, 2, 9.5})));      // beyond max_distance
  EXPECT_TRUE(std::isnan(box.at({2, 2, 4.005})));    // within the resolution
  probe_fixture_t step(quvra_test::step_block_soup(0, 0, 0, 8, 4, 8, 4, 4));
  EXPECT_DOUBLE_EQ(step.at({3.5, 2, 3.5}), -std::sqrt(0.5));  // inside, nearest the concave edge
  EXPECT_DOUBLE_EQ(step.at({4.5, 2, 4.5}), 0.5);             // outside it, two faces tie
  EXPECT_DOUBLE_EQ(step.at({9, 2, 5}), std::sqrt(2));        // beyond a convex edge of the step
}

TEST(DistanceSign, DegenerateTrianglesAreDroppedAndLoneEdgesAreNotSigned) {
  std::vector<geom::stl_tri_t> tris = quvra_test::box_soup(0, 0, 0, 4, 4, 4);
  tris.push_back({{1, 1, 1}, {2, 2, 2}, {3, 3, 3}, {0, 0, 1}});
  probe_fixture_t box(tris);
  EXPECT_EQ(box.design.tris.size(), 12u);
  EXPECT_DOUBLE_EQ(box.at({2, 2, 3.5}), -0.5);
  probe_fixture_t lone(std::vector<geom::stl_tri_t>{{{0, 0, 0}, {4, 0, 0}, {0, 4, 0}, {0, 0, 1}}});
  EXPECT_DOUBLE_EQ(lone.at({1, 1, 2}), 2);
  EXPECT_TRUE(std::isnan(lone.at({-1, -1, 0})));
}

}  // namespace
