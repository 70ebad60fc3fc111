#include "cbtr/inspect/fly_pieces.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <set>
#include <unordered_map>

#include "cbtr/model/cell_surface.h"
#include "cbtr/model/cell_t.h"
#include "cbtr/model/tree_walk.h"

namespace cbtr {

namespace {

// A cell taking part in the piece count: a node of the tree, or a uniform
// solid child that the tree keeps as a null slot (then only its parent).
struct piece_cell_t {
  std::shared_ptr<cube_node_t> node;    // null for a null slot
  std::shared_ptr<cube_node_t> parent;  // where the slot is
};

using lattice_point_t = std::array<std::uint32_t, 3>;

struct lattice_point_hash {
  std::size_t operator()(const lattice_point_t& p) const {
    return (std::uint64_t(p[2]) << 5) ^ (p[1] >> 5) ^ (std::uint64_t(p[0]) * 0x9e3779b97f4a7c15ULL);
  }
};

class piece_finder_t {
 public:
  void walk(const std::shared_ptr<cube_node_t>& node, const std::shared_ptr<cube_node_t>& parent);
  // Cells of every piece but the one with the most cells.
  std::vector<piece_cell_t> outside_main_body();

 private:
  std::size_t _find(std::size_t i) {
    while (_group[i] != i) i = _group[i] = _group[_group[i]];
    return i;
  }
  void _join(std::size_t a, std::size_t b) {
    a = _find(a);
    b = _find(b);
    if (a == b) return;
    if (_size[a] < _size[b]) std::swap(a, b);
    _group[b] = a;
    _size[a] += _size[b];
  }
  void _add(piece_cell_t cell, std::uint32_t x, std::uint32_t y, std::uint32_t z, int depth, std::uint32_t word);

  std::vector<piece_cell_t> _cells;
  std::vector<std::size_t> _group, _size;
  std::unordered_map<lattice_point_t, std::size_t, lattice_point_hash> _corners;
};

void piece_finder_t::_add(piece_cell_t cell, std::uint32_t x, std::uint32_t y, std::uint32_t z, int depth,
                          std::uint32_t word) {
  const std::size_t i = _cells.size();
  _cells.push_back(std::move(cell));
  _group.push_back(i);
  _size.push_back(1);
  const std::uint32_t h = half_width(depth);
  for (int k = 0; k < 8; ++k) {
    if (corner_of(word, k) != corner_solid) continue;
    const lattice_point_t key = {(k & 1) ? x + h : x - h, (k & 2) ? y + h : y - h, (k & 4) ? z + h : z - h};
    const auto [it, fresh] = _corners.try_emplace(key, i);
    if (!fresh) _join(i, it->second);
  }
}

void piece_finder_t::walk(const std::shared_ptr<cube_node_t>& node, const std::shared_ptr<cube_node_t>& parent) {
  const std::int32_t kind = node->kind;
  if (kind == kind_solid || (kind & kind_leaf)) {
    _add({node, parent}, node->x, node->y, node->z, node->depth(),
         kind == kind_solid ? corners_all_solid : static_cast<std::uint32_t>(node->corners));
    return;
  }
  if (!(kind & kind_branch)) return;
  const child_snapshot_t kids = snapshot_children(*node);
  const cell_t cell{{node->x, node->y, node->z}, node->depth()};
  for (int k = 0; k < 8; ++k) {
    if (kids[k]) {
      walk(kids[k], node);
    } else if (corner_of(node->corners, k) == corner_solid) {
      const cell_t c = cell.child(k);
      _add({nullptr, node}, c.centre[0], c.centre[1], c.centre[2], c.depth, corners_all_solid);
    }
  }
}

std::vector<piece_cell_t> piece_finder_t::outside_main_body() {
  std::vector<std::size_t> roots;
  for (std::size_t i = 0; i < _cells.size(); ++i)
    if (_find(i) == i) roots.push_back(i);
  if (roots.size() < 2) return {};
  const std::size_t main =
      *std::max_element(roots.begin(), roots.end(), [&](std::size_t a, std::size_t b) { return _size[a] < _size[b]; });
  std::vector<piece_cell_t> out;
  for (std::size_t i = 0; i < _cells.size(); ++i)
    if (_find(i) != main) out.push_back(_cells[i]);
  return out;
}

void empty_cell(cube_node_t& node) {
  node.children.store(nullptr);
  node.kind = kind_air;
  node.corners = corners_all_air;
  for (auto& tip : node.tips) tip = no_tip;
  node.attachment = nullptr;
  node.tri_cache.store({});
  node.draw_cache.store({});
}

// A branch whose children changed: its corners and tips again from them.
void refresh(cube_node_t& branch) {
  const child_snapshot_t kids = snapshot_children(branch);
  if (const std::optional<std::uint32_t> word = branch_corner_word(kids)) branch.corners = *word;
  summarise_branch_tips(branch, kids);
  branch.neighbours.reset();
  branch.tri_cache.store({});
  branch.draw_cache.store({});
}

}  // namespace

std::size_t remove_fly_pieces(cube_tree_t& tree) {
  const std::shared_ptr<cube_node_t> root = tree.root.load();
  if (!root) return 0;
  piece_finder_t finder;
  finder.walk(root, nullptr);
  const std::vector<piece_cell_t> chips = finder.outside_main_body();
  // Parents to refresh, deepest first, so that each sees its children done.
  std::map<int, std::set<std::shared_ptr<cube_node_t>>, std::greater<>> parents;
  for (const piece_cell_t& chip : chips) {
    if (chip.node) empty_cell(*chip.node);
    if (chip.parent) parents[chip.parent->depth()].insert(chip.parent);
  }
  while (!parents.empty()) {
    const auto level = parents.begin()->second;
    parents.erase(parents.begin());
    for (const auto& branch : level) {
      refresh(*branch);
      if (const std::shared_ptr<cube_node_t> up = branch->parent.lock()) parents[up->depth()].insert(up);
    }
  }
  return chips.size();
}

std::vector<inf_edge_cut_t> inf_edge_cuts(const cube_tree_t& tree) {
  std::vector<inf_edge_cut_t> out;
  for_each_leaf(tree, [&](const cube_node_t& leaf) {
    inf_edge_cut_t cut{cell_box(leaf), {}};
    for (std::uint32_t e = 0; e < 12; ++e)
      if (std::isinf(leaf.tips[e].load())) cut.edges.push_back(e);
    if (!cut.edges.empty()) out.push_back(std::move(cut));
  });
  return out;
}

}  // namespace cbtr
