#include "cbtr/build/evaluate_cell.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "cbtr/build/resolve_tip_side.h"

// Side 0 of an edge decides the corner at its low end by the crossing
// nearest that end, side 1 the corner at the high end by the crossing
// nearest it. A crossing exactly at a corner puts the corner on the surface.
// Crossings are taken in order of distance from the corner, in groups that
// share one point: a group inside one triangle decides by its normal, a
// group on triangle edges or corners by the judge values, and a group whose
// triangles only touch the line is passed over.

namespace cbtr {

namespace {

using hit_list_t = std::vector<tip_candidate_t>;

struct edge_t {
  grid_line_t line;
  std::uint32_t cu, cv;     // the line's lattice place
  double lo, hi;            // the edge's span on the line
  bool lo_on_face = false;  // a triangle lying along the line covers the low end
  bool hi_on_face = false;
};

edge_t edge_of(const cell_t& cell, int e) {
  const int a = edge_axis(e), a1 = axis_after(a), a2 = axis_before(a);
  const int low = edge_low_corner(e);
  const std::uint32_t cu = cell.face(a1, (low >> a1) & 1), cv = cell.face(a2, (low >> a2) & 1);
  return {grid_line_t(a, lattice_to_model(cu), lattice_to_model(cv)), cu, cv, cell.face_model(a, false),
          cell.face_model(a, true)};
}

// Edges k = 0..3 along an axis lie on the low or high face of the next axis
// (bit 0 of k) and of the one after (bit 1). Row x, column y: the edges on a
// face that the box spans, x and y holding the spanned faces of those two
// axes as bits (low 1, high 2).
constexpr std::array<std::array<std::uint8_t, 4>, 4> spanned_edges = [] {
  std::array<std::array<std::uint8_t, 4>, 4> table{};
  for (int x = 0; x < 4; ++x)
    for (int y = 0; y < 4; ++y)
      for (int k = 0; k < 4; ++k)
        if ((x >> (k & 1)) & (y >> (k >> 1)) & 1) table[x][y] |= static_cast<std::uint8_t>(1u << k);
  return table;
}();

// Quick rejection in doubles: rounding is monotonic and lattice values are
// exact, so a triangle whose double box misses a line or its span misses it
// exactly too. Bit e is set for each edge e the box may meet; all twelve are
// read off one look at the box.
std::uint16_t edges_near(const tri_extension_t& t, const cell_t& cell) {
  std::array<int, 3> faces{};   // the cell's face planes the box spans, as bits
  std::array<bool, 3> spans{};  // the box overlaps the cell along the axis
  for (int a = 0; a < 3; ++a) {
    const double lo = cell.face_model(a, false), hi = cell.face_model(a, true);
    const double box_lo = component(t.lo, a), box_hi = component(t.hi, a);
    faces[a] = (box_lo <= lo && lo <= box_hi) | (box_lo <= hi && hi <= box_hi) << 1;
    spans[a] = box_lo <= hi && lo <= box_hi;
  }
  const auto along = [&](int a, int a1, int a2) {
    return spans[a] ? static_cast<std::uint16_t>(spanned_edges[faces[a1]][faces[a2]] << (4 * a)) : 0;
  };
  return along(0, 1, 2) | along(1, 2, 0) | along(2, 0, 1);
}

void take_hit(edge_t& edge, hit_list_t& hits, const tri_extension_t& tri, edge_hit_t& hit) {
  if (hit.flags & edge_hit_t::in_plane) {
    edge.lo_on_face |= hit.t0 <= edge.lo && edge.lo <= hit.t1;
    edge.hi_on_face |= hit.t0 <= edge.hi && edge.hi <= hit.t1;
  } else if (edge.lo <= hit.t0 && hit.t0 <= edge.hi) {
    hits.push_back({hit.t0, &tri, &hit});
  }
}

// Crossings in order along the line, those at one point kept in list order.
// An edge has a handful at most, which insertion orders without the buffer
// that std::stable_sort takes on every call.
void order_along_line(hit_list_t& hits) {
  const auto earlier = [](const tip_candidate_t& x, const tip_candidate_t& y) { return x.t < y.t; };
  if (hits.size() > 32) {
    std::stable_sort(hits.begin(), hits.end(), earlier);
    return;
  }
  for (auto it = hits.begin(); it != hits.end(); ++it)
    std::rotate(std::upper_bound(hits.begin(), it, *it, earlier), it, it + 1);
}

// The verdict of one group of crossings at one point, cached in its hits.
std::uint32_t group_verdict(std::span<const tip_candidate_t> group, const grid_line_t& line, int side,
                            const tri_extension_t*& winner) {
  winner = group.front().tri;
  if (group.size() == 1 && (group.front().hit->flags & edge_hit_t::interior))
    return state_from_normal(*winner, line.a, side, corner_solid);
  for (const tip_candidate_t& c : group)
    if (const std::uint32_t cached = c.hit->verdict(side)) return cached;
  const std::uint32_t verdict = resolve_group(group, line, side, winner);
  for (const tip_candidate_t& c : group) c.hit->set_verdict(side, verdict);
  return verdict;
}

// [first, last) is ordered from this side's corner inwards.
template <class It>
void decide_side(edge_side_t& s, It first, It last, const edge_t& edge, int side, evaluation_scratch_t& scratch) {
  const double corner = side ? edge.hi : edge.lo;
  if (side ? edge.hi_on_face : edge.lo_on_face) {
    s = {corner, surface_mode, nullptr, true};
    return;
  }
  hit_list_t& group = scratch.group;
  hit_list_t& first_touch = scratch.first_touch;
  first_touch.clear();
  for (It it = first; it != last;) {
    const double t = it->t;
    group.clear();
    for (; it != last && it->t == t; ++it) group.push_back(*it);
    if (t == corner) {
      s = {t, surface_mode, group.front().tri, true};
      return;
    }
    const tri_extension_t* winner = nullptr;
    const std::uint32_t verdict = group_verdict(group, edge.line, side, winner);
    if (verdict != touch_verdict) {
      s = {t, verdict, winner, false};
      return;
    }
    if (first_touch.empty()) first_touch = group;
  }
  // Nothing crosses the edge on this side: the corner is where the line runs
  // beside the nearest touching point.
  if (!first_touch.empty()) s.state = touch_state(first_touch, edge.line.a, side);
}

// A surface that only touches the line between the corners, and reaches
// one corner, crosses the edge at that corner as seen from the other end.
void borrow_far_corner(std::array<edge_side_t, 2>& sides, const edge_t& edge) {
  if (std::isinf(sides[0].value) && sides[1].value == edge.hi) sides[0].value = edge.hi;
  if (std::isinf(sides[1].value) && sides[0].value == edge.lo) sides[1].value = edge.lo;
}

void apply_to_corner(edge_tips_t& et, int corner, std::uint32_t state) {
  const std::uint32_t current = corner_of(et.corners, corner);
  if (current == 0) {
    et.corners = with_corner(et.corners, corner, state);
  } else if (current != state) {
    et.corners = with_corner(et.corners, corner, corner_solid | 1u);
    et.defect = true;
  }
}

}  // namespace

edge_tips_t evaluate_cell(const cell_t& cell, std::span<const std::uint32_t> list,
                          const std::vector<tri_extension_t>& tris, hit_memo_t& memo, evaluation_scratch_t& scratch) {
  edge_tips_t et;
  hit_list_t& hits = scratch.hits;
  std::vector<std::uint16_t>& near = scratch.near;
  near.clear();
  for (std::uint32_t i : list) near.push_back(edges_near(tris[i], cell));
  for (int e = 0; e < 12; ++e) {
    edge_t edge = edge_of(cell, e);
    hits.clear();
    for (std::size_t j = 0; j < list.size(); ++j) {
      const std::uint32_t i = list[j];
      if (!((near[j] >> e) & 1)) continue;
      if (edge_hit_t* hit = memo.meeting(i, edge.line.a, edge.cu, edge.cv)) take_hit(edge, hits, tris[i], *hit);
    }
    order_along_line(hits);
    decide_side(et.sides[e][0], hits.begin(), hits.end(), edge, 0, scratch);
    decide_side(et.sides[e][1], hits.rbegin(), hits.rend(), edge, 1, scratch);
    borrow_far_corner(et.sides[e], edge);
    for (int side = 0; side < 2; ++side) {
      const edge_side_t& s = et.sides[e][side];
      const int corner = side ? edge_high_corner(e) : edge_low_corner(e);
      if (s.state) apply_to_corner(et, corner, s.state);
      if (s.at_corner) et.on_surface |= static_cast<std::uint8_t>(1u << corner);
    }
  }
  fill_unset_corners(et);
  return et;
}

}  // namespace cbtr
