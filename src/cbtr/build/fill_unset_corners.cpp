#include "cbtr/build/evaluate_cell.h"

namespace cbtr {

namespace {

// A corner in conflict is still a solid corner with its low bit set.
bool is_solid(std::uint32_t state) { return (state & corner_solid) != 0; }
bool is_air(std::uint32_t state) { return state == corner_air; }

struct seen_t {
  bool air = false, solid = false;
  void add(std::uint32_t state) {
    air |= is_air(state);
    solid |= is_solid(state);
  }
};

void set_if_unset(edge_tips_t& et, int corner, std::uint32_t state) {
  if (corner_of(et.corners, corner) == corner_unset) et.corners = with_corner(et.corners, corner, state);
}

// A corner on the surface counts as solid by convention and says nothing of
// the corners next to it. It is heard only as a last resort, when no other
// corner of the cell speaks.
template <std::size_t N>
seen_t seen_among(const edge_tips_t& et, const int (&corners)[N], bool last_resort) {
  seen_t off_surface, on_surface;
  for (int c : corners) ((et.on_surface >> c) & 1 ? on_surface : off_surface).add(corner_of(et.corners, c));
  return off_surface.air || off_surface.solid || !last_resort ? off_surface : on_surface;
}

// No neighbour of k is known: look at every corner but the opposite one.
void fill_from_far_corners(edge_tips_t& et, int k) {
  const int opposite = 7 - k;
  int others[7];
  for (int c = 0, n = 0; c < 8; ++c)
    if (c != opposite) others[n++] = c;
  const seen_t seen = seen_among(et, others, true);
  if (seen.air && seen.solid) {
    et.defect = true;
  } else if (seen.air || seen.solid) {
    for (int c : others) set_if_unset(et, c, seen.air ? corner_air : corner_solid);
  } else {
    const std::uint32_t state = corner_of(et.corners, opposite);
    for (int c = 0; c < 8; ++c) set_if_unset(et, c, state);
  }
}

// One round over the unset corners: a corner whose known neighbours agree
// takes their state. Answers whether any corner was set.
bool spread_along_edges(edge_tips_t& et) {
  bool changed = false;
  for (int k = 0; k < 8; ++k) {
    if (corner_of(et.corners, k) != corner_unset) continue;
    const int neighbours[3] = {k ^ 1, k ^ 2, k ^ 4};
    const seen_t seen = seen_among(et, neighbours, false);
    if (seen.air && seen.solid) {
      et.defect = true;
    } else if (seen.air || seen.solid) {
      set_if_unset(et, k, seen.air ? corner_air : corner_solid);
      changed = true;
    }
  }
  return changed;
}

}  // namespace

void fill_unset_corners(edge_tips_t& et) {
  if (et.corners == 0) return;
  // An edge without a crossing joins corners of one state, so states flow
  // along such edges first; the far corners are looked at only for corners
  // that no edge reaches from a known one.
  while (spread_along_edges(et)) {
  }
  for (int k = 0; k < 8; ++k)
    if (corner_of(et.corners, k) == corner_unset) fill_from_far_corners(et, k);
}

}  // namespace cbtr
