// The 256 rows of the leaf surface table, checked as geometry: with every
// tip at its edge's midpoint, each row must use exactly the edges whose
// corners differ, close up inside the cell, and face away from the solid.

#include "cbtr/model/surface_table.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <set>

#include "cbtr/model/cell_numbering.h"

namespace {

using namespace cbtr;
using point = std::array<double, 3>;

point edge_midpoint(int e) {
  const int lo = edge_low_corner(e);
  point p = {double(lo & 1), double((lo >> 1) & 1), double((lo >> 2) & 1)};
  p[edge_axis(e)] = 0.5;
  return p;
}

bool is_solid(int row, int corner) { return (row >> corner) & 1; }

// A segment between two tips lies on a cell face when both tips share a
// coordinate of 0 or 1; such segments continue in the neighbouring cell.
bool on_cell_face(int e1, int e2) {
  const point a = edge_midpoint(e1), b = edge_midpoint(e2);
  for (int k = 0; k < 3; ++k)
    if (a[k] == b[k] && (a[k] == 0 || a[k] == 1)) return true;
  return false;
}

point normal_of(int e0, int e1, int e2) {
  const point a = edge_midpoint(e0), b = edge_midpoint(e1), c = edge_midpoint(e2);
  const point u = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
  const point v = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
  return {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
}

TEST(SurfaceTable, EveryRowCutsExactlyTheEdgesWithACrossing) {
  for (int row = 0; row < 256; ++row) {
    std::set<int> crossing, used;
    for (int e = 0; e < 12; ++e)
      if (is_solid(row, edge_low_corner(e)) != is_solid(row, edge_high_corner(e))) crossing.insert(e);
    const surface_row_t& r = surface_table[row];
    ASSERT_EQ(r.size % 3, 0) << row;
    for (int i = 0; i < r.size; ++i) used.insert(r.edges[i]);
    EXPECT_EQ(used, crossing) << "row " << row;
  }
}

TEST(SurfaceTable, InnerSegmentsAreSharedByTwoTrianglesInOppositeDirections) {
  for (int row = 0; row < 256; ++row) {
    std::map<std::pair<int, int>, int> directed;
    const surface_row_t& r = surface_table[row];
    for (int i = 0; i < r.size; i += 3)
      for (int k = 0; k < 3; ++k) ++directed[{r.edges[i + k], r.edges[i + (k + 1) % 3]}];
    for (const auto& [seg, count] : directed) {
      if (on_cell_face(seg.first, seg.second)) continue;
      const auto back = directed.find({seg.second, seg.first});
      EXPECT_TRUE(back != directed.end() && back->second == count)
          << "row " << row << " segment " << seg.first << "-" << seg.second;
    }
  }
}

TEST(SurfaceTable, TrianglesFaceAwayFromTheSolidCorners) {
  for (int row = 0; row < 256; ++row) {
    const surface_row_t& r = surface_table[row];
    for (int i = 0; i < r.size; i += 3) {
      const point n = normal_of(r.edges[i], r.edges[i + 1], r.edges[i + 2]);
      // Along each cut edge, the solid end lies behind the triangle.
      double behind = 0;
      for (int k = 0; k < 3; ++k) {
        const int e = r.edges[i + k];
        behind += n[edge_axis(e)] * (is_solid(row, edge_low_corner(e)) ? -1 : 1);
      }
      EXPECT_LT(behind, 0) << "row " << row << " triangle " << i / 3;
    }
  }
}

}  // namespace
