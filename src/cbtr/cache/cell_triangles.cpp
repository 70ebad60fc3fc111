#include "cbtr/cache/cell_triangles.h"

#include "cbtr/cache/cached_in_node.h"
#include "cbtr/cache/cell_caches.h"
#include "cbtr/model/cell_surface.h"
#include "cbtr/model/tree_walk.h"

namespace cbtr {

namespace {

std::shared_ptr<tri_entry_t> build_entry(const cube_node_t& node) {
  std::vector<cube_tri_t> tris = leaf_triangles(node);
  const std::uint64_t cost = tri_cost_bytes * tris.size();
  return std::make_shared<tri_entry_t>(std::move(tris), cost);
}

}  // namespace

std::shared_ptr<const tri_entry_t> cell_triangles(const cube_node_t& node) {
  if (node.kind & (kind_air | kind_solid)) return nullptr;
  return cached_in_node(node.tri_cache, tris_cache(), [&node] { return build_entry(node); });
}

std::vector<cube_tri_t> list_surface(const cube_tree_t& tree) {
  std::vector<cube_tri_t> out;
  for_each_leaf(tree, [&out](const cube_node_t& leaf) {
    const std::shared_ptr<const tri_entry_t> entry = cell_triangles(leaf);
    if (entry) out.insert(out.end(), entry->payload.begin(), entry->payload.end());
  });
  return out;
}

}  // namespace cbtr
