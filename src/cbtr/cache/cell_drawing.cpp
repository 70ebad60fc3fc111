#include "cbtr/cache/cell_drawing.h"

#include <vector>

#include "cbtr/cache/cached_in_node.h"
#include "cbtr/cache/cell_caches.h"
#include "cbtr/cache/cell_triangles.h"
#include "disp/disp_torch.h"

namespace cbtr {

namespace {

std::vector<float> vertices_of(const std::vector<cube_tri_t>& tris) {
  std::vector<float> out;
  out.reserve(tris.size() * 3 * cell_rail_t::stride);
  for (const cube_tri_t& t : tris) {
    for (const std::array<double, 3>& v : t.v) {
      out.push_back(0.0f);
      out.insert(out.end(), stock_colour, stock_colour + 3);
      for (const double c : t.normal) out.push_back(static_cast<float>(c));
      for (const double c : v) out.push_back(static_cast<float>(c));
    }
  }
  return out;
}

std::shared_ptr<drawing_entry_t> build_entry(const std::vector<cube_tri_t>& tris) {
  const std::vector<float> vertices = vertices_of(tris);
  cell_drawing_t made;
  made.drawing = std::make_unique<disp::drawing_t<cell_rail_t>>();
  made.drawing->upload(vertices.data(), vertices.size());
  const std::uint64_t cost = vertex_cost_bytes * made.drawing->vertex_count;
  return std::make_shared<drawing_entry_t>(std::move(made), cost);
}

}  // namespace

cell_drawing_t::~cell_drawing_t() {
  if (!drawing || drawing->vbo == 0) return;
  const disp::disp_torch torch;
  drawing.reset();
}

std::shared_ptr<const drawing_entry_t> cell_drawing(const cube_node_t& node) {
  if (node.kind & (kind_air | kind_solid)) return nullptr;
  return cached_in_node(node.draw_cache, drawing_cache(), [&node] {
    // The cell may have become uniform since the test above.
    static const std::vector<cube_tri_t> none;
    const std::shared_ptr<const tri_entry_t> tris = cell_triangles(node);
    return build_entry(tris ? tris->payload : none);
  });
}

}  // namespace cbtr
