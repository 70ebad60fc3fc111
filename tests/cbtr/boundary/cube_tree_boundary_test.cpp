// The stock as a host makes, saves and reads it through the cube_tree__
// family.

#include "cbtr/cube_tree.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "cbtr/cache/cell_triangles.h"
#include "cbtr/inspect/surface_export.h"
#include "cbtr/model/cube_tree_t.h"
#include "geom/stl3d.h"
#include "soups.h"
#include "surface_checks.h"

namespace {

struct soup_guard {
  stl3d_t* soup;
  explicit soup_guard(const std::vector<geom::stl_tri_t>& tris)
      : soup(stl3d__new_by_copy_array(reinterpret_cast<const double*>(tris.data()), tris.size())) {}
  ~soup_guard() { stl3d__delete(soup); }
};

std::vector<std::string> steps_seen;

void record_step(const progress_monitor_t* m) {
  char text[256];
  progress_monitor__get_msg(m, text, sizeof text);
  if (steps_seen.empty() || steps_seen.back() != text) steps_seen.emplace_back(text);
}

TEST(CubeTreeBoundary, RefusesMissingSoupsAndUnusableWidths) {
  soup_guard box(quvra_test::box_soup(0, 0, 0, 1, 1, 1));
  EXPECT_EQ(cube_tree__new(nullptr, 1, nullptr, nullptr), nullptr);
  for (double w : {0.0, -1.0, double(NAN), double(INFINITY)})
    EXPECT_EQ(cube_tree__new(box.soup, w, nullptr, nullptr), nullptr);
  cube_tree__delete(nullptr);
  EXPECT_EQ(cube_tree__get_grid_width(nullptr), 0.0);
}

TEST(CubeTreeBoundary, BuildsWithProgressAndTheGridWidthOfItsResolution) {
  soup_guard box(quvra_test::box_soup(0.3, 0.2, 0.1, 10.7, 8.9, 6.35));
  steps_seen.clear();
  cube_tree_t* tree = cube_tree__new(box.soup, 0.3, nullptr, record_step);
  ASSERT_NE(tree, nullptr);
  EXPECT_EQ(cube_tree__get_grid_width(tree), 0.25);
  ASSERT_GE(steps_seen.size(), 4u);
  EXPECT_EQ(steps_seen.front().rfind("fraction_resolution: ", 0), 0u);
  EXPECT_EQ(steps_seen.back(), "Finished building nodes.");
  double b[6] = {INFINITY, INFINITY, INFINITY, -INFINITY, -INFINITY, -INFINITY};
  cube_tree__ExpandToBox3d(tree, b);
  EXPECT_EQ(std::vector<double>(b, b + 6), (std::vector<double>{0.3, 0.2, 0.1, 10.7, 8.9, 6.35}));
  cube_tree__delete(tree);
}

struct defect_seen_t {
  std::array<double, 6> box;
  int depth;
  std::vector<defect_tip_info> tips;
};
std::vector<defect_seen_t> defects_seen;

void take_defect(const defect_cell_info* cell, int depth, const defect_tip_info* tips, size_t count) {
  defects_seen.push_back({{cell->box[0], cell->box[1], cell->box[2], cell->box[3], cell->box[4], cell->box[5]},
                          depth,
                          {tips, tips + count}});
}

TEST(CubeTreeBoundary, OpenSoupReportsItsUnclassifiedCellsWithTheirHits) {
  auto open = quvra_test::box_soup(0.3, 0.2, 0.1, 4.7, 3.9, 2.35);
  open.resize(open.size() - 2);  // the last face missing
  soup_guard soup(open);
  defects_seen.clear();
  testing::internal::CaptureStdout();
  cube_tree_t* tree = cube_tree__new_with_defect_infos(soup.soup, 0.5, nullptr, nullptr, take_defect);
  const std::string log = testing::internal::GetCapturedStdout();
  ASSERT_NE(tree, nullptr);
  ASSERT_FALSE(defects_seen.empty());
  EXPECT_NE(log.find("cube tree: " + std::to_string(defects_seen.size()) + " cells could not be classified"),
            std::string::npos);
  for (const defect_seen_t& d : defects_seen) {
    EXPECT_LE(d.depth, 18);
    EXPECT_EQ(d.box[3] - d.box[0], cbtr::grid_width(static_cast<std::uint32_t>(d.depth)));
    ASSERT_FALSE(d.tips.empty());
    for (const defect_tip_info& t : d.tips) {
      EXPECT_LT(t.edge, 12u);
      EXPECT_NE(t.flags & 0x300u, 0u);  // crossing or in plane, never a miss
      EXPECT_EQ(std::isnan(t.t1), (t.flags & 0x100u) == 0);
    }
  }
  cube_tree__delete(tree);
  // Without a function it builds as cube_tree__new does.
  cube_tree_t* plain = cube_tree__new_with_defect_infos(soup.soup, 0.5, nullptr, nullptr, nullptr);
  EXPECT_NE(plain, nullptr);
  cube_tree__delete(plain);
}

std::vector<quvra_test::triangle3> listed;

void take_tri(const double t[12]) { listed.push_back({{{t[0], t[1], t[2]}, {t[3], t[4], t[5]}, {t[6], t[7], t[8]}}}); }

TEST(CubeTreeBoundary, SurfaceIsListedAtTheFinestCellsOrCoarser) {
  soup_guard box(quvra_test::box_soup(0.3, 0.2, 0.1, 10.7, 8.9, 6.35));
  cube_tree_t* tree = cube_tree__new(box.soup, 0.5, nullptr, nullptr);
  listed.clear();
  cube_tree__get_tris(tree, 0, take_tri);
  const auto fine = quvra_test::check_closure(listed);
  EXPECT_EQ(listed.size(), cbtr::list_surface(*tree).size());
  EXPECT_EQ(fine.open_lines, 0u);
  EXPECT_NEAR(fine.volume_about_origin, 560.73, 1e-9);
  // Cells of 4: fewer triangles, each a summary of the finer ones.
  listed.clear();
  cube_tree__get_tris(tree, 4 * std::sqrt(3.0), take_tri);
  EXPECT_GT(listed.size(), 0u);
  EXPECT_LT(listed.size(), cbtr::list_surface(*tree).size());
  listed.clear();
  cube_tree__get_tris(nullptr, 0, take_tri);
  cube_tree__get_tris(tree, 0, nullptr);
  EXPECT_TRUE(listed.empty());
  cube_tree__delete(tree);
}

std::vector<rgb_tri> coloured;
int coloured_calls = 0;
void take_rgb(const rgb_tri* tris, size_t count) {
  ++coloured_calls;
  coloured.assign(tris, tris + count);
}

TEST(CubeTreeBoundary, ColouredSurfaceComesInOneCallWithUnitNormals) {
  soup_guard box(quvra_test::box_soup(0.3, 0.2, 0.1, 10.7, 8.9, 6.35));
  cube_tree_t* tree = cube_tree__new(box.soup, 0.5, nullptr, nullptr);
  coloured_calls = 0;
  cube_tree__get_rgb_tris(tree, 0, take_rgb);
  EXPECT_EQ(coloured_calls, 1);
  ASSERT_EQ(coloured.size(), cbtr::list_surface(*tree).size());
  for (const rgb_tri& t : coloured) {
    EXPECT_EQ(t.rgb[0], 1.0);
    EXPECT_NEAR(t.normal[0] * t.normal[0] + t.normal[1] * t.normal[1] + t.normal[2] * t.normal[2], 1.0, 1e-12);
  }
  cube_tree_t* hollow = cube_tree__new(box.soup, 0.5, nullptr, nullptr);
  hollow->root.store(nullptr);
  cube_tree__get_rgb_tris(hollow, 0, take_rgb);
  EXPECT_EQ(coloured_calls, 2);
  EXPECT_TRUE(coloured.empty());
  cube_tree__delete(hollow);
  cube_tree__delete(tree);
}

TEST(CubeTreeBoundary, ExportDepthFollowsTheCellDiagonal) {
  EXPECT_EQ(cbtr::export_depth(131072), 1);
  EXPECT_EQ(cbtr::export_depth(185363.80004736633), 0);
  EXPECT_EQ(cbtr::export_depth(0), 26);
  EXPECT_EQ(cbtr::export_depth(1e-9), 26);
  EXPECT_EQ(cbtr::export_depth(std::sqrt(2.0)), 17);
}

}  // namespace
