#include "cbtr/cache/cell_triangles.h"

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
  std::weak_ptr<tri_entry_t> seen = node.tri_cache.load();
  if (std::shared_ptr<tri_entry_t> hit = seen.lock()) {
    tris_cache().touch(hit);
    return hit;
  }
  const std::shared_ptr<tri_entry_t> made = build_entry(node);
  // Install unless another thread has installed a live entry meanwhile; an
  // expired one is replaced like an empty slot.
  while (!node.tri_cache.compare_exchange_weak(seen, made)) {
    if (std::shared_ptr<tri_entry_t> other = seen.lock()) return other;
  }
  tris_cache().touch(made);
  return made;
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
