#include "cbtr/cache/draw_tree.h"

#include "cbtr/cache/cell_drawing.h"
#include "cbtr/cache/draw_depth.h"

namespace cbtr {

namespace {

class tree_painter_t {
 public:
  tree_painter_t(disp::bind& b, int depth)
      : _b(b),
        _depth(depth),
        _test([&b](const double centre[3], double radius) { return b.box_relation(centre, radius); }) {}

  // tested: whether node may still lie partly out of view.
  void paint(const cube_node_t& node, bool tested) {
    if (tested) {
      const int relation = cell_view_relation(node, _test);
      if (relation == 0) return;
      tested = relation == 1;
    }
    const std::shared_ptr<cube_node_t::children_t> slots = node.children.load();
    if (node.depth() >= _depth || !slots) {
      if (const std::shared_ptr<const drawing_entry_t> entry = cell_drawing(node))
        entry->payload.drawing->display(_b, GL_TRIANGLES);
      return;
    }
    // A null slot is a uniform child, which has no surface.
    for (const std::shared_ptr<cube_node_t>& child : snapshot_slots(slots))
      if (child) paint(*child, tested);
  }

 private:
  disp::bind& _b;
  const int _depth;
  const view_test_t _test;
};

}  // namespace

int draw_tree(cube_tree_t& tree, disp::bind& b) {
  const int depth = choose_draw_depth(tree, b);
  if (const std::shared_ptr<cube_node_t> root = tree.root.load()) tree_painter_t(b, depth).paint(*root, true);
  return depth;
}

void cube_tree_t::display(disp::bind* b) { draw_tree(*this, *b); }

}  // namespace cbtr
