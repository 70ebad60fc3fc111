#include "cbtr/build/resolve_tip_side.h"

#include "cbtr/build/judge_value.h"

namespace cbtr {

std::uint32_t state_from_normal(const tri_extension_t& tri, int axis, int side, std::uint32_t zero_state) {
  const int sign = tri.normal_sign[axis];
  if (sign == 0) return zero_state;
  const int towards = side ? 1 : -1;
  return sign == towards ? corner_air : corner_solid;
}

bool meets_moved_line(const tri_extension_t& tri, const grid_line_t& line) {
  const int n_sign = tri.normal_sign[line.a];
  if (n_sign == 0) return false;
  for (int k = 0; k < 3; ++k) {
    int o = projected_orient(tri, k, line);
    if (o == 0) {
      // On the edge's own line: the step (e, e^2) adds Ex e^2 - Ey e to
      // cross(E, Q - P), for the projected edge E = (Ex, Ey).
      const vec3fr& p = tri.corner(k);
      const vec3fr& q = tri.corner((k + 1) % 3);
      const int ey = geom::compare(component(q, line.a2), component(p, line.a2));
      o = ey != 0 ? -ey : geom::compare(component(q, line.a1), component(p, line.a1));
    }
    if (o * n_sign < 0) return false;
  }
  return true;
}

std::uint32_t resolve_group(std::span<const tip_candidate_t> group, const grid_line_t& line, int side,
                            const tri_extension_t*& winner) {
  winner = nullptr;
  judge_t best;
  for (const tip_candidate_t& c : group) {
    if (!meets_moved_line(*c.tri, line)) continue;
    judge_t judge = judge_value(*c.tri, line.a);
    // Side 0 looks towards -axis: there the smallest crossing is nearest.
    const int order = winner ? compare_judges(judge, best) : 0;
    if (!winner || (side ? order > 0 : order < 0)) {
      winner = c.tri;
      best = std::move(judge);
    }
  }
  return winner ? state_from_normal(*winner, line.a, side, corner_solid) : touch_verdict;
}

namespace {

// The second triangle lies behind the first's plane at a convex fold.
bool convex_fold(const tip_candidate_t& first, const tip_candidate_t& second) {
  const int k = second.hit->edge_index();
  const vec3fr into_second = second.tri->corner((k + 2) % 3) - second.tri->corner(k);
  return geom::dot(first.tri->tri.normal, into_second).sign() < 0;
}

}  // namespace

std::uint32_t touch_state(std::span<const tip_candidate_t> group, int axis, int side) {
  bool air = false, solid = false;
  for (const tip_candidate_t& c : group) {
    const std::uint32_t s = state_from_normal(*c.tri, axis, side, corner_unset);
    air |= s == corner_air;
    solid |= s == corner_solid;
  }
  if (air != solid) return air ? corner_air : corner_solid;
  const bool two_on_one_edge = group.size() == 2 && group[0].hit->edge_index() >= 0 && group[1].hit->edge_index() >= 0;
  if (!air || !two_on_one_edge) return corner_unset;
  return convex_fold(group[0], group[1]) ? corner_air : corner_solid;
}

}  // namespace cbtr
