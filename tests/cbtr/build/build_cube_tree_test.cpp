// Stocks built from closed soups: the surface they list is closed, encloses
// the volume of the input within the bound that cells allow, and lies on the
// input; at every cell width, with sharp, concave and saddle-shaped parts.

#include "cbtr/build/build_cube_tree.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "cbtr/cache/cell_triangles.h"
#include "common/stop.h"
#include "soups.h"
#include "step_stock.h"
#include "surface_checks.h"

namespace {

using namespace cbtr;
using quvra_test::point3;
using quvra_test::triangle3;

std::vector<triangle3> surface(const cube_tree_t& tree) {
  std::vector<triangle3> out;
  for (const cube_tri_t& t : list_surface(tree)) out.push_back({t.v[0], t.v[1], t.v[2]});
  return out;
}

std::unique_ptr<cube_tree_t> build(const std::vector<geom::stl_tri_t>& soup, double w, build_counts_t* counts = nullptr,
                                   const stop_token* stop = nullptr, common::progress_monitor_t* monitor = nullptr) {
  geom::stl3d_t s;
  s.tris = soup;
  return build_cube_tree(s, w, stop, monitor, counts);
}

double input_volume(const std::vector<geom::stl_tri_t>& soup) {
  std::vector<triangle3> tris;
  for (const auto& t : soup) tris.push_back({t.a, t.b, t.c});
  return quvra_test::enclosed_volume(tris, {0, 0, 0});
}

// The surface is closed and its volume doesn't depend on where it is taken
// from; returns that volume.
double closed_volume(const std::vector<triangle3>& tris, const std::string& what) {
  const auto c = quvra_test::check_closure(tris);
  EXPECT_GT(c.edges, 0u) << what;
  EXPECT_EQ(c.open_lines, 0u) << what;
  EXPECT_NEAR(c.volume_about_origin, c.volume_about_far_point, 1e-6 * std::abs(c.volume_about_origin) + 1e-6) << what;
  return c.volume_about_origin;
}

// Every vertex of the surface on one of the planes, inside their box.
bool on_box_faces(const point3& p, const std::array<double, 6>& box) {
  bool on_face = false;
  for (int k = 0; k < 3; ++k) {
    if (p[k] < box[k] || p[k] > box[k + 3]) return false;
    on_face |= p[k] == box[k] || p[k] == box[k + 3];
  }
  return on_face;
}

struct polyhedron_case {
  std::string name;
  std::vector<geom::stl_tri_t> soup;
  double edge_length;  // summed length of the sharp edges
  std::vector<double> widths;
};

TEST(BuildCubeTree, SharpEdgedSolidsLoseOrGainOnlyChamfersAndKeepTheirFaces) {
  const std::vector<polyhedron_case> cases = {
      {"box", quvra_test::box_soup(0.3, 0.2, 0.1, 10.7, 8.9, 6.35), 4 * (10.4 + 8.7 + 6.25), {2, 1, 0.25}},
      {"step block",
       quvra_test::step_block_soup(0.3, 0.2, 0.1, 12.7, 8.9, 6.35, 7.4, 3.3),
       2 * (12.4 + 3.2 + 5.3 + 3.05 + 7.1 + 6.25) + 6 * 8.7,
       {2, 1, 0.25}},
      // Four faces on cell planes, cut by diagonals that cross grid lines
      // lying in those planes.
      {"box on cell planes", quvra_test::box_soup(0, 0.2, 2, 8, 8.9, 6), 4 * (8 + 8.7 + 4), {2, 1, 0.25}},
      // Faces on cell planes only: every corner on the surface counts as
      // inside, and no chamfer is lost.
      {"aligned cube", quvra_test::box_soup(-4, -4, -4, 4, 4, 4), 0, {1}},
  };
  for (const auto& c : cases) {
    const double exact = input_volume(c.soup);
    for (double w : c.widths) {
      build_counts_t counts;
      const auto tree = build(c.soup, w, &counts);
      const auto tris = surface(*tree);
      const std::string what = c.name + " at cell " + std::to_string(w);
      const double v = closed_volume(tris, what);
      EXPECT_LE(std::abs(v - exact), 0.5 * w * w * c.edge_length + 1e-9) << what;
      EXPECT_EQ(counts.defects, 0u) << what;
    }
  }
  // A box's faces are reproduced exactly.
  const std::array<double, 6> box = {0.3, 0.2, 0.1, 10.7, 8.9, 6.35};
  for (const auto& t : surface(*build(quvra_test::box_soup(box[0], box[1], box[2], box[3], box[4], box[5]), 1)))
    for (const auto& p : t) EXPECT_TRUE(on_box_faces(p, box)) << p[0] << " " << p[1] << " " << p[2];
}

TEST(BuildCubeTree, FaceCutIntoUnequalTrianglesMakesTheSameCellsAsTwoHalves) {
  // One plane holds large leaves however it is cut into triangles.
  const auto halves = quvra_test::box_soup(0.3, 0.2, 0.1, 10.7, 8.9, 6.35);
  auto fan = halves;
  const point3 q{3.1, 6.5, 6.35}, a{0.3, 0.2, 6.35}, b{10.7, 0.2, 6.35}, c{10.7, 8.9, 6.35}, d{0.3, 8.9, 6.35};
  const geom::stl_tri_t up{{}, {}, {}, {0, 0, 1}};
  fan.erase(fan.begin() + 2, fan.begin() + 4);
  for (const auto& [p, r] : {std::pair{a, b}, {b, c}, {c, d}, {d, a}}) fan.push_back({p, r, q, up.normal});
  const auto plain = build(halves, 0.25), cut = build(fan, 0.25);
  EXPECT_EQ(quvra_test::leaf_count(cut->root.load()), quvra_test::leaf_count(plain->root.load()));
  EXPECT_NEAR(closed_volume(surface(*cut), "fan"), closed_volume(surface(*plain), "halves"), 1e-9);
}

TEST(BuildCubeTree, SmoothSolidsAreClosedAndOnTheInput) {
  const double r = 10;
  const auto sphere = quvra_test::sphere_soup(r, 48, 96);
  const double exact = input_volume(sphere);
  for (double w : {2 * r / 16, 2 * r / 32, 2 * r / 64}) {
    const auto tris = surface(*build(sphere, w));
    const double v = closed_volume(tris, "sphere");
    // At 1/64 of the diameter the volume comes within 1%.
    EXPECT_LT(std::abs(v - exact) / exact, w == 2 * r / 64 ? 0.01 : 0.06) << "cell " << w;
    for (const auto& t : tris)
      for (const auto& p : t) EXPECT_NEAR(std::sqrt(p[0] * p[0] + p[1] * p[1] + p[2] * p[2]), r, 0.03);
  }
  // The inner equator of a torus is a ring of saddle vertices, and with
  // these rings some of them lie exactly on grid lines.
  const auto torus = quvra_test::torus_soup(8, 3, 48, 24);
  const double torus_volume = input_volume(torus);
  for (double w : {2.0, 1.0, 0.25}) {
    build_counts_t counts;
    const double v = closed_volume(surface(*build(torus, w, &counts)), "torus");
    EXPECT_LT(std::abs(v - torus_volume) / torus_volume, w == 0.25 ? 0.01 : 0.1) << "cell " << w;
    EXPECT_EQ(counts.defects, 0u) << "cell " << w;
  }
}

TEST(BuildCubeTree, GridLinesThroughVerticesGiveConsistentCorners) {
  // An octahedron whose six vertices lie where grid lines of all three
  // directions cross: every corner there is settled by judge values.
  const point3 v[6] = {{4, 0, 0}, {-4, 0, 0}, {0, 4, 0}, {0, -4, 0}, {0, 0, 4}, {0, 0, -4}};
  std::vector<geom::stl_tri_t> soup;
  for (int sx : {0, 1})
    for (int sy : {2, 3})
      for (int sz : {4, 5}) {
        // Counter-clockwise from outside: flip when an odd number of signs is negative.
        const bool flip = (sx + (sy - 2) + (sz - 4)) % 2 == 1;
        soup.push_back(flip ? geom::stl_tri_t{v[sx], v[sz], v[sy], {}} : geom::stl_tri_t{v[sx], v[sy], v[sz], {}});
      }
  ASSERT_NEAR(input_volume(soup), 4.0 / 3.0 * 64, 1e-9);
  for (double w : {2.0, 1.0, 0.5}) {
    build_counts_t counts;
    const double vol = closed_volume(surface(*build(soup, w, &counts)), "octahedron");
    EXPECT_LE(std::abs(vol - 4.0 / 3.0 * 64), 0.5 * w * w * 12 * std::sqrt(32.0)) << "cell " << w;
    EXPECT_EQ(counts.defects, 0u);
  }
}

TEST(BuildCubeTree, RepeatedTrianglesAreDroppedButMirroredOnesKept) {
  auto soup = quvra_test::box_soup(0.3, 0.2, 0.1, 4.7, 3.9, 2.35);
  const std::size_t n = soup.size();
  soup.push_back(soup[0]);
  soup.push_back({soup[1].b, soup[1].c, soup[1].a, {}});
  build_counts_t counts;
  build(soup, 1, &counts);
  EXPECT_EQ(counts.duplicates, 2u);
  EXPECT_EQ(counts.kept, n);
  soup.push_back({soup[2].a, soup[2].c, soup[2].b, {}});
  EXPECT_EQ(without_duplicates(soup).size(), n + 1);
}

TEST(BuildCubeTree, OpenAndSelfOverlappingSoupsBuildAndCountTheirDefects) {
  const auto a = quvra_test::box_soup(0.3, 0.2, 0.1, 4.7, 3.9, 2.35);
  const auto b = quvra_test::box_soup(2.3, 1.2, 1.1, 6.7, 5.9, 4.35);
  auto overlapping = a;
  overlapping.insert(overlapping.end(), b.begin(), b.end());
  auto open = a;
  open.resize(a.size() - 2);  // one face missing
  for (const auto* soup : {&overlapping, &open}) {
    build_counts_t counts;
    testing::internal::CaptureStdout();
    const auto tree = build(*soup, 0.5, &counts);
    const std::string log = testing::internal::GetCapturedStdout();
    EXPECT_NE(tree->root.load(), nullptr);
    EXPECT_GT(counts.defects, 0u);
    EXPECT_NE(log.find("cube tree: " + std::to_string(counts.defects) + " cells could not be classified"),
              std::string::npos);
  }
}

TEST(BuildCubeTree, EmptySoupGivesAnEmptyStock) {
  const auto tree = build({}, 1);
  EXPECT_EQ(tree->root.load(), nullptr);
  EXPECT_EQ(tree->resolution, 17u);
}

TEST(BuildCubeTree, TinyFeaturesStillGetAUsableFractionGrid) {
  const auto sliver = quvra_test::box_soup(0, 0, 0, 1, 1, 1e-5);
  EXPECT_EQ(fraction_resolution(sliver, 1), 0.0009765625 * 0.001);
  // The corner of a side face lies 0.2 off its diagonal on z: the smallest
  // feature of a 1 x 1 x 0.5 box.
  EXPECT_NEAR(fraction_resolution(quvra_test::box_soup(0, 0, 0, 1, 1, 0.5), 1), 0.2e-3, 1e-15);
  EXPECT_NEAR(fraction_resolution(quvra_test::box_soup(0, 0, 0, 8, 8, 8), 0.25), 0.25e-3, 1e-15);
}

// Stops the build from inside, when the monitor announces the cell step.
struct stopping_monitor_t {
  common::progress_monitor_t monitor;
  stop_source* source;
  std::vector<std::string> steps;
};

void on_step(common::progress_monitor_t* m) {
  auto* s = reinterpret_cast<stopping_monitor_t*>(reinterpret_cast<char*>(m) - offsetof(stopping_monitor_t, monitor));
  const std::string msg = m->get_msg();
  if (s->steps.empty() || s->steps.back() != msg) s->steps.push_back(msg);
  if (msg.starts_with("Start building nodes.")) stop_source__request_stop(s->source);
}

TEST(BuildCubeTree, ReportsItsStepsAndStopsMidway) {
  stopping_monitor_t sm;
  sm.monitor.on_change = on_step;
  sm.source = new__stop_source();
  stop_token* tok = stop_source__get_token(sm.source);
  auto soup = quvra_test::sphere_soup(10, 24, 48);
  soup.push_back(soup[5]);
  const auto tree = build(soup, 0.5, nullptr, tok, &sm.monitor);
  EXPECT_EQ(tree->root.load(), nullptr);
  ASSERT_EQ(sm.steps.size(), 3u);
  EXPECT_TRUE(sm.steps[0].starts_with("fraction_resolution: 0.0"));
  EXPECT_EQ(sm.steps[1], "Build triangle extension cache. (1 duplicate faces dropped)");
  EXPECT_EQ(sm.steps[2], "Start building nodes. (" + std::to_string(soup.size() - 1) +
                             " faces; dropped 1 duplicate, 0 zero-area after quantization)");
  // A stop requested before the build starts ends it as well.
  EXPECT_EQ(build(soup, 0.5, nullptr, tok)->root.load(), nullptr);
  delete__stop_token(tok);
  delete__stop_source(sm.source);
}

}  // namespace
