// Side and step counts a host may pass that would crash, overflow or fill
// memory give an empty soup.

#include <gtest/gtest.h>

#include <climits>

#include "geom/Stl3d.h"
#include "geom/stl3d_t.h"
#include "mech/apt_t.h"

namespace {

std::size_t tris_of(const geom::Stl3d& soup) { return soup.stl ? soup.stl->tris.size() : 0; }

}  // namespace

TEST(RevolveLimits, SideCountsOutsideTheLimitsGiveAnEmptySoup) {
  const geom::pair_zr_t<double> outline[] = {{0, 0}, {0, 1}, {2, 1}};
  for (const int sides : {-5, 0, 2, mech::apt_t::max_sides + 1, INT_MAX})
    EXPECT_EQ(tris_of(mech::apt_t::revolve_zrs(outline, 3, sides)), 0u) << sides;
  EXPECT_EQ(tris_of(mech::apt_t::revolve_zrs(outline, 3, 8)), 8u * 4);
}

TEST(RevolveLimits, ArcStepsOutsideTheLimitsGiveAnEmptySoup) {
  const mech::apt_t tool(10, 2, 3, 2, 0, 0, 20);
  EXPECT_GT(tris_of(tool.get_Stl3d(16, 4)), 0u);
  for (const int steps : {-1, 0, mech::apt_t::max_arc_steps + 1, INT_MAX})
    EXPECT_EQ(tris_of(tool.get_Stl3d(16, steps)), 0u) << steps;
  EXPECT_EQ(tris_of(tool.get_Stl3d(mech::apt_t::max_sides, mech::apt_t::max_arc_steps)), 0u);
}
