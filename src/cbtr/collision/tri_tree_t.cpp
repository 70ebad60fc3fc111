#include "cbtr/collision/tri_tree_t.h"

#include "cbtr/collision/tri_sat.h"
#include "cbtr/model/cell_t.h"

namespace cbtr {

namespace {

box6_t box_of(const cell_t& c) {
  return {c.face_model(0, false), c.face_model(1, false), c.face_model(2, false),
          c.face_model(0, true),  c.face_model(1, true),  c.face_model(2, true)};
}

void build(tri_node_t& node, std::vector<const tri_sat_t*> list, const tri_leaf_rule_t& rule) {
  const int level = node.level();
  if (level >= rule.leaf_level || (level >= rule.few_level && list.size() < rule.few)) {
    node.tris = std::move(list);
    return;
  }
  const cell_t cell{{node.ix, node.iy, node.iz}, level};
  std::vector<const tri_sat_t*> part;
  for (int k = 0; k < 8; ++k) {
    const cell_t c = cell.child(k);
    const box6_t box = box_of(c);
    part.clear();
    for (const tri_sat_t* s : list)
      if (touches_box(*s, box)) part.push_back(s);
    if (part.empty()) continue;
    node.child[k] = std::make_unique<tri_node_t>(&node, c.centre[0], c.centre[1], c.centre[2]);
    build(*node.child[k], part, rule);
  }
}

}  // namespace

tri_tree_t::tri_tree_t(const geom::stl3d_t& mesh, const tri_leaf_rule_t& rule)
    : tris(reinterpret_cast<const double*>(mesh.tris.data())),
      count(mesh.tris.size()),
      root(nullptr, lattice_centre, lattice_centre, lattice_centre) {
  sats.reserve(count);
  for (std::size_t i = 0; i < count; ++i) sats.push_back(make_tri_sat(tris + 12 * i));
  std::vector<const tri_sat_t*> all;
  all.reserve(count);
  for (const tri_sat_t& s : sats) all.push_back(&s);
  build(root, std::move(all), rule);
}

}  // namespace cbtr
