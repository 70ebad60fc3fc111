#include "cbtr/step/tool_cells_t.h"

#include "cbtr/model/cell_surface.h"
#include "cbtr/model/cube_tree_t.h"

namespace cbtr {

std::shared_ptr<cube_node_t> tool_cells_t::build(const cell_t& cell, std::span<const std::uint32_t> list) {
  if (stopped()) return nullptr;
  const auto lists = distribute(cell, list);
  child_snapshot_t kids;
  for (int k = 0; k < 8; ++k)
    if (!lists[k].empty()) kids[k] = this->cell(cell.child(k), lists[k]);
  const std::optional<std::uint32_t> word = branch_corner_word(kids);
  if (!word || stopped()) return nullptr;
  auto branch =
      std::make_shared<cube_node_t>(std::weak_ptr<cube_node_t>{}, cell.centre[0], cell.centre[1], cell.centre[2]);
  branch->kind = kind_branch;
  branch->corners = *word;
  auto children = std::make_shared<cube_node_t::children_t>();
  for (int k = 0; k < 8; ++k) (*children)[k].store(kids[k]);
  branch->children.store(std::move(children));
  summarise_branch_tips(*branch, kids);
  adopt_children(branch);
  return branch;
}

std::shared_ptr<cube_node_t> tool_cells_t::cell(const cell_t& child, std::span<const std::uint32_t> list) {
  const bool finest = child.depth >= static_cast<int>(_resolution);
  if (finest || flat_in(child, list)) {
    const edge_tips_t tips = evaluate(child, list);
    if (!is_uniform_corner_word(tips.corners)) return leaf_over(child, list, tips);
    // A flat piece that crosses none of this cell's edges is looked for in
    // the children, unless its plane only touches the cell: a face on a
    // cell plane would otherwise be searched down to the finest cells.
    if (finest || plane_only_touches(child, list)) return nullptr;
  }
  return build(child, list);
}

std::shared_ptr<cube_node_t> tool_cells_t::leaf(const cell_t& cell, const edge_tips_t& tips) {
  auto leaf =
      std::make_shared<cube_node_t>(std::weak_ptr<cube_node_t>{}, cell.centre[0], cell.centre[1], cell.centre[2]);
  leaf->kind = kind_leaf;
  leaf->corners = tips.corners;
  for (int e = 0; e < 12; ++e) leaf->tips[e] = tips.tip(e);
  return leaf;
}

}  // namespace cbtr
