#pragma once

// The evaluation of one cell against the triangles that reach it: for each
// edge and each side (side 0 looks from the low end of the edge, side 1
// from the high end) the nearest crossing and the state it gives the corner
// at that end, and the corner word that results.

#include <array>
#include <cstdint>
#include <limits>

#include "cbtr/build/edge_hit_t.h"
#include "cbtr/build/tri_extension_t.h"
#include "cbtr/model/cell_numbering.h"

namespace cbtr {

// The state a corner takes when the surface passes exactly through it: a
// body includes its own boundary.
inline constexpr std::uint32_t surface_mode = 2;

// One triangle's crossing of a cell edge at t.
struct tip_candidate_t {
  double t;
  const tri_extension_t* tri;
  edge_hit_t* hit;
};

struct edge_side_t {
  double value;                             // the crossing nearest this side's end; +-inf if none
  std::uint32_t state = 0;                  // the state it gives the corner there, 0 if none
  const tri_extension_t* winner = nullptr;  // the triangle that decided
  bool at_corner = false;                   // the surface passes through the corner itself
};

struct edge_tips_t {
  edge_tips_t();

  std::array<std::array<edge_side_t, 2>, 12> sides;
  std::uint32_t corners = 0;
  std::uint8_t on_surface = 0;  // bit k: corner k lies on the surface
  bool defect = false;

  // The tip a leaf keeps for edge e by its corner word: the crossing seen
  // from the air end, or NaN where the corners don't differ.
  double tip(int e) const;
};

}  // namespace cbtr
