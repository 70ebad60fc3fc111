#include "cbtr/model/cube_node_t.h"

namespace cbtr {

cube_node_t::cube_node_t(std::weak_ptr<cube_node_t> parent_node, std::uint32_t cx, std::uint32_t cy, std::uint32_t cz)
    : parent(std::move(parent_node)), x(cx), y(cy), z(cz) {
  for (auto& tip : tips) tip = no_tip;
}

std::array<std::shared_ptr<cube_node_t>, 8> snapshot_children(const cube_node_t& node) {
  return snapshot_slots(node.children.load());
}

std::array<std::shared_ptr<cube_node_t>, 8> snapshot_slots(const std::shared_ptr<cube_node_t::children_t>& slots) {
  std::array<std::shared_ptr<cube_node_t>, 8> out;
  if (!slots) return out;
  for (int k = 0; k < 8; ++k) out[k] = (*slots)[k].load();
  return out;
}

std::array<double, 6> cell_box(const cube_node_t& node) {
  const auto h = static_cast<std::int32_t>(half_width(node.depth()));
  return {lattice_offset_to_model(node.x, -h), lattice_offset_to_model(node.y, -h), lattice_offset_to_model(node.z, -h),
          lattice_offset_to_model(node.x, h),  lattice_offset_to_model(node.y, h),  lattice_offset_to_model(node.z, h)};
}

std::array<double, 3> tip_point(const cube_node_t& node, int e) {
  const std::array<double, 6> box = cell_box(node);
  const int a = edge_axis(e);
  const int low = edge_low_corner(e);
  std::array<double, 3> p;
  for (int axis = 0; axis < 3; ++axis)
    p[axis] = axis == a ? node.tips[e].load() : box[axis + ((low >> axis) & 1 ? 3 : 0)];
  return p;
}

}  // namespace cbtr
