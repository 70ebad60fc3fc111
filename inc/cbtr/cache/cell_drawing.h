#pragma once

// A cell's surface as a vertex drawing on the GPU, derived from the cell's
// triangles through the process-wide drawing cache.
//
// A vertex is ten floats, 40 bytes: pick, colour, normal, position; the
// drawing cache charges exactly that per vertex.

#include <memory>

#include "cbtr/model/cube_node_t.h"
#include "disp/drawing_t.h"

namespace cbtr {

using cell_rail_t = disp::rail_pcnv<float>;
static_assert(cell_rail_t::vertex_bytes == 40, "the drawing cache charges 40 bytes a vertex");

// Until cells are coloured by attachments, every cell carries this colour
// and pick id 0 (no object).
inline constexpr float stock_colour[3] = {0.72f, 0.74f, 0.78f};

// Owns its buffer. The cache may drop the last reference on any thread, so
// freeing the buffer takes a torch.
struct cell_drawing_t {
  cell_drawing_t() = default;
  cell_drawing_t(cell_drawing_t&&) = default;
  ~cell_drawing_t();

  std::unique_ptr<disp::drawing_t<cell_rail_t>> drawing;
};

// The drawing of node, built on a miss (needs a context locked) and listed
// as the newest entry of the drawing cache. Null for a uniform node, which
// has no surface. Safe to call from several threads, as cell_triangles.
std::shared_ptr<const drawing_entry_t> cell_drawing(const cube_node_t& node);

}  // namespace cbtr
