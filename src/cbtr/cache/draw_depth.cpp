#include "cbtr/cache/draw_depth.h"

#include <algorithm>
#include <array>

#include "cbtr/cache/cell_caches.h"
#include "disp/bind.h"

namespace cbtr {

namespace {

constexpr double sqrt3 = 1.7320508075688772;

// Cells met by the view, per depth. A depth whose count has passed the
// limit is not walked further: it can no longer be chosen, nor can any
// depth below it.
class view_counter_t {
 public:
  view_counter_t(const view_test_t& test, std::uint64_t limit) : _test(test), _limit(limit) {}

  void walk(const cube_node_t& node, bool tested) {
    const int d = node.depth();
    if (_count[d] > _limit) return;
    if (tested) {
      const int relation = cell_view_relation(node, _test);
      if (relation == 0) return;
      tested = relation == 1;
    }
    ++_count[d];
    for (const std::shared_ptr<cube_node_t>& child : snapshot_children(node))
      if (child) walk(*child, tested);
  }

  int deepest_within_limit(std::uint32_t resolution) const {
    const int last = static_cast<int>(std::min<std::uint32_t>(resolution, max_depth));
    int depth = 0;
    for (int d = 0; d <= last && _count[d] < _limit; ++d) depth = d;
    return depth;
  }

 private:
  const view_test_t& _test;
  const std::uint64_t _limit;
  std::array<std::uint64_t, max_depth + 1> _count{};
};

}  // namespace

int cell_view_relation(const cube_node_t& node, const view_test_t& test) {
  const double centre[3] = {lattice_to_model(node.x), lattice_to_model(node.y), lattice_to_model(node.z)};
  return test(centre, sqrt3 * grid_width(node.depth()));
}

int view_depth(const cube_tree_t& tree, const view_test_t& test, std::uint64_t limit) {
  view_counter_t counter(test, limit);
  if (const std::shared_ptr<cube_node_t> root = tree.root.load()) counter.walk(*root, true);
  return counter.deepest_within_limit(tree.resolution);
}

int choose_draw_depth(cube_tree_t& tree, const view_test_t& test) {
  return tree.recent_depths.record(view_depth(tree, test, node_limit()));
}

int choose_draw_depth(cube_tree_t& tree, disp::bind& b) {
  return choose_draw_depth(tree,
                           [&b](const double centre[3], double radius) { return b.box_relation(centre, radius); });
}

}  // namespace cbtr
