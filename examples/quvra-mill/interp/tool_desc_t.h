#pragma once

// A cutter as the host describes it, before any mesh exists. Every shape is
// also written as the seven APT CUTTER parameters, so the mesh maker needs to
// read only those; the shape says which simpler form the user gave.
//
// APT notation, in the tool's own frame with the tip at the origin and the
// axis pointing up:
//   d      diameter at the widest point of the cutting part
//   r      corner radius
//   e, f   corner centre: e out from the axis, f up from the tip
//   alpha  angle of the bottom face above the horizontal, degrees
//   beta   angle of the side away from the axis, degrees (0: cylinder)
//   h      height of the cutting part; 0 when the description gives none

namespace mill {

enum class tool_shape {
  flat,
  ball,
  bull,
  drill,
  apt,
};

struct tool_desc_t {
  tool_shape shape = tool_shape::flat;
  double d = 0;
  double r = 0;
  double e = 0;
  double f = 0;
  double alpha = 0;
  double beta = 0;
  double h = 0;

  bool operator==(const tool_desc_t&) const = default;
};

}  // namespace mill
