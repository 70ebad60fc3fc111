#include "cbtr/step/run_step.h"

#include <numeric>

#include "cbtr/analytic/stick_cells.h"
#include "cbtr/build/cell_tree_builder_t.h"
#include "cbtr/model/cell_surface.h"
#include "cbtr/step/contour_memo.h"
#include "cbtr/step/leaf_merge.h"
#include "cbtr/step/leaf_split.h"
#include "cbtr/step/material_extent.h"

// Addition runs as subtraction from the stock's complement: "material" below
// is the stock when subtracting and its complement when adding, and every
// corner word is read and written through that view.

namespace cbtr {

namespace {

// changed: the node's cells changed; removed: material went, which is what
// a step reports. A tool lying against the material's surface may move that
// surface from one cell to its neighbour without removing anything.
constexpr int looked = 1, remove_me = 2, changed = 4, removed = 8;

// A split stock leaf gives air to a point on its own surface.
constexpr std::uint32_t split_mode = corner_air;

// What a level did, and the tool's corners over its cell when it has them.
struct level_t {
  int bits = 0;
  std::optional<std::uint32_t> word;
};

void forget_caches(cube_node_t& node) {
  node.tri_cache.store({});
  node.draw_cache.store({});
}

bool is_uniform_kind(const cube_node_t& n) { return (n.kind & 3) != 0; }
bool is_branch(const cube_node_t& n) { return (n.kind & kind_branch) != 0; }

class step_runner_t {
 public:
  step_runner_t(tool_cells_t& tool, std::uint32_t limit, const step_options_t& options)
      : _builder(tool), _limit(limit), _options(options) {
    if (options.want_contours) contours.reserve(expected_contours(options.subtract));
  }

  level_t branch(const std::shared_ptr<cube_node_t>& stock, const cell_t& cell, std::span<const std::uint32_t> list);
  std::shared_ptr<cube_node_t> tool_tree(std::span<const std::uint32_t> list) {
    return _builder.build(root_cell, list);
  }
  // The stock word seen as material, or a material word seen as stock.
  std::uint32_t seen(std::uint32_t word) const { return _options.subtract ? word : inverted_corners(word); }
  void empty_node(cube_node_t& node) const;

  std::vector<contour_t> contours;

 private:
  // delta holds the tool's cells where the step merges or grafts them;
  // elsewhere the tool's corner words are all the level needs.
  struct pass_t {
    std::shared_ptr<cube_node_t::children_t> slots;  // the stock's child slots
    child_snapshot_t stock, delta;
    std::array<std::uint32_t, 8> word{};
    std::uint8_t known = 0, recursed = 0, marked = 0, skip = 0;
    bool changed = false, removed = false;

    void know(int k, std::uint32_t corners) {
      word[k] = corners;
      known |= static_cast<std::uint8_t>(1u << k);
    }
    bool knows(int k) const { return (known >> k) & 1; }
  };

  bool material_solid(const std::shared_ptr<cube_node_t>& child, const cube_node_t& parent, int k) const;
  bool material_air(const std::shared_ptr<cube_node_t>& child, const cube_node_t& parent, int k) const;
  // Whether the material in a stock child that isn't empty has volume.
  bool material_volume(const cube_node_t& child) const;
  void first_pass(const std::shared_ptr<cube_node_t>& stock, const cell_t& cell, int k,
                  std::span<const std::uint32_t> list, pass_t& pass);
  // Whether child k changed.
  bool recurse(const cell_t& cell, int k, std::span<const std::uint32_t> list, pass_t& pass);
  void split_and_recurse(const cell_t& cell, int k, std::span<const std::uint32_t> list, pass_t& pass);
  bool tool_beyond_material(const cube_node_t& leaf, const cell_t& cell, std::span<const std::uint32_t> list) const;
  bool passes_by(const cube_node_t& leaf, const cell_t& cell, int k, std::span<const std::uint32_t> list, pass_t& pass);
  void at_leaf(const cell_t& cell, int k, std::span<const std::uint32_t> list, pass_t& pass);
  void second_pass(const std::shared_ptr<cube_node_t>& stock, std::uint32_t tool_word, int k, pass_t& pass);
  bool merge_material(cube_node_t& leaf, const cube_node_t& tool) const;
  void turn_to_material(cube_node_t& tool) const;
  void finish_level(const std::shared_ptr<cube_node_t>& stock, const child_snapshot_t& kids, level_t& result);
  // The stock's child k becomes node, in the tree and in the level's snapshot.
  static void set_child(int k, const std::shared_ptr<cube_node_t>& node, pass_t& pass) {
    (*pass.slots)[k].store(node);
    pass.stock[k] = node;
  }

  tool_cells_t& _builder;
  std::uint32_t _limit;
  step_options_t _options;
};

bool step_runner_t::material_solid(const std::shared_ptr<cube_node_t>& child, const cube_node_t& parent, int k) const {
  if (!child) return corner_of(seen(parent.corners), k) == corner_solid;
  return child->kind == (_options.subtract ? kind_solid : kind_air);
}

bool step_runner_t::material_volume(const cube_node_t& child) const {
  if (child.kind & kind_leaf) return leaf_holds_volume(child, seen(child.corners));
  // The complement of a branch is taken to hold material.
  if (is_branch(child)) return !_options.subtract || holds_volume(child);
  return true;
}

bool step_runner_t::material_air(const std::shared_ptr<cube_node_t>& child, const cube_node_t& parent, int k) const {
  if (!child) return corner_of(seen(parent.corners), k) == corner_air;
  return child->kind == (_options.subtract ? kind_air : kind_solid);
}

level_t step_runner_t::branch(const std::shared_ptr<cube_node_t>& stock, const cell_t& cell,
                              std::span<const std::uint32_t> list) {
  const auto lists = _builder.distribute(cell, list);
  pass_t pass;
  pass.slots = stock->children.load();
  pass.stock = snapshot_slots(pass.slots);
  for (int k = 0; k < 8; ++k) {
    if (lists[k].empty())
      pass.marked |= 1u << k;
    else
      first_pass(stock, cell, k, lists[k], pass);
  }
  if (pass.marked == 0xFF) return {};
  level_t result{looked, branch_corner_word(pass.word, pass.known)};
  if (result.word)
    for (int k = 0; k < 8; ++k)
      if (!(pass.recursed >> k & 1)) second_pass(stock, *result.word, k, pass);
  if (pass.removed) result.bits |= removed;
  if (pass.changed) finish_level(stock, pass.stock, result);
  return result;
}

void step_runner_t::first_pass(const std::shared_ptr<cube_node_t>& stock, const cell_t& cell, int k,
                               std::span<const std::uint32_t> list, pass_t& pass) {
  const std::shared_ptr<cube_node_t>& child = pass.stock[k];
  if (!child || is_uniform_kind(*child)) {
    // Only a solid cell of material has anything for the tool to take; in
    // an empty one a single look still tells the tool's corners there,
    // which the level's summary of the tool needs.
    if (material_solid(child, *stock, k)) {
      pass.delta[k] = _builder.cell(cell.child(k), list);
      if (pass.delta[k]) pass.know(k, pass.delta[k]->corners);
    } else {
      const edge_tips_t tips = _builder.evaluate(cell.child(k), list);
      if (!is_uniform_corner_word(tips.corners)) pass.know(k, tips.corners);
    }
    if (!pass.knows(k)) pass.marked |= 1u << k;
    return;
  }
  if (child->kind & kind_leaf) {
    at_leaf(cell, k, list, pass);
    return;
  }
  recurse(cell, k, list, pass);
}

bool step_runner_t::recurse(const cell_t& cell, int k, std::span<const std::uint32_t> list, pass_t& pass) {
  const level_t r = branch(pass.stock[k], cell.child(k), list);
  if (r.word) pass.know(k, *r.word);
  if (!(r.bits & looked)) {
    pass.marked |= 1u << k;
    return false;
  }
  pass.recursed |= 1u << k;
  if (r.bits & remove_me) set_child(k, nullptr, pass);
  pass.changed |= (r.bits & changed) != 0;
  pass.removed |= (r.bits & removed) != 0;
  return (r.bits & changed) != 0;
}

// A leaf split for a closer look that the tool then left as it was becomes
// the leaf again: the tool's edge passing over a flat floor would otherwise
// leave it in the finest cells for good.
void step_runner_t::split_and_recurse(const cell_t& cell, int k, std::span<const std::uint32_t> list, pass_t& pass) {
  const std::shared_ptr<cube_node_t>& leaf = pass.stock[k];
  forget_caches(*leaf);
  if (recurse(cell, k, list, pass)) return;
  leaf->children.store(nullptr);
  leaf->kind = kind_leaf;
}

// Whether, along some axis, the tool's surface in the cell begins where the
// leaf's material has ended.
bool step_runner_t::tool_beyond_material(const cube_node_t& leaf, const cell_t& cell,
                                         std::span<const std::uint32_t> list) const {
  const std::uint32_t word = seen(leaf.corners);
  for (int axis = 0; axis < 3; ++axis)
    for (bool high : {true, false}) {
      if (!material_clear_of_face(word, axis, high)) continue;
      const std::optional<double> from = _builder.reach(axis, !high, list);
      if (from && material_ends_before(word, leaf.tips, cell, axis, high, *from, _options.touch_counts)) return true;
    }
  return false;
}

// A tool whose surface stays beyond a leaf's material, and which is not
// solid on the material's side, leaves the leaf as it is: its rim passing
// over a floor needs no closer look. The tool's corners are still taken, for
// the level's summary.
bool step_runner_t::passes_by(const cube_node_t& leaf, const cell_t& cell, int k, std::span<const std::uint32_t> list,
                              pass_t& pass) {
  if (!tool_beyond_material(leaf, cell, list)) return false;
  const edge_tips_t tips = _builder.evaluate(cell, list);
  // Uniform corners can't tell whether the tool holds the material whole.
  if (is_uniform_corner_word(tips.corners)) return false;
  const std::uint32_t word = seen(leaf.corners);
  for (int c = 0; c < 8; ++c) {
    const std::uint32_t material = corner_of(word, c);
    if (material != corner_air && (material != corner_solid || corner_of(tips.corners, c) != corner_air)) return false;
  }
  pass.know(k, tips.corners);
  pass.skip |= 1u << k;
  return true;
}

void step_runner_t::at_leaf(const cell_t& cell, int k, std::span<const std::uint32_t> list, pass_t& pass) {
  const std::shared_ptr<cube_node_t>& leaf = pass.stock[k];
  const cell_t child = cell.child(k);
  const bool coarse = child.depth < static_cast<int>(_limit);
  const bool flat = _builder.flat_in(child, list);
  if (coarse && !flat && !passes_by(*leaf, child, k, list, pass) && split_leaf(leaf, split_mode)) {
    split_and_recurse(cell, k, list, pass);
    return;
  }
  if (pass.skip >> k & 1) return;
  const edge_tips_t tips = _builder.evaluate(child, list);
  if (is_uniform_corner_word(tips.corners)) {
    pass.marked |= 1u << k;
    return;
  }
  pass.delta[k] = _builder.leaf(child, tips);
  pass.know(k, tips.corners);
  if (!coarse || !flat) return;
  const int verdict =
      compare_leaf_with_tool(seen(leaf->corners), leaf->tips, pass.delta[k]->corners, pass.delta[k]->tips);
  if (verdict == 2) pass.skip |= 1u << k;
  if (verdict == 3 && split_leaf(leaf, split_mode)) split_and_recurse(cell, k, list, pass);
}

bool step_runner_t::merge_material(cube_node_t& leaf, const cube_node_t& tool) const {
  leaf.corners = seen(leaf.corners);
  const bool edge_changed = merge_tool_leaf(leaf, tool, _options.touch_counts);
  leaf.corners = seen(leaf.corners);
  return edge_changed;
}

// What is left of solid material is the tool's complement. The tool's cells
// were made for this step alone, so they become the stock's as they are.
void step_runner_t::turn_to_material(cube_node_t& tool) const {
  const std::int32_t kind = tool.kind;
  tool.kind = (kind & 3) && _options.subtract ? (kind ^ 3) : kind;
  tool.corners = seen(inverted_corners(tool.corners));
  for (const std::shared_ptr<cube_node_t>& kid : snapshot_children(tool))
    if (kid) turn_to_material(*kid);
}

void step_runner_t::second_pass(const std::shared_ptr<cube_node_t>& stock, std::uint32_t tool_word, int k,
                                pass_t& pass) {
  if (pass.skip >> k & 1) return;
  const std::shared_ptr<cube_node_t>& child = pass.stock[k];
  const std::shared_ptr<cube_node_t>& tool = pass.delta[k];
  if (!tool) {
    // A cell the tool's surface doesn't reach, inside the tool or out of
    // it, or one of empty material.
    if (corner_of(tool_word, k) != corner_solid || material_air(child, *stock, k)) return;
    pass.removed = pass.removed || !child || material_volume(*child);
    set_child(k, nullptr, pass);
    pass.changed = true;
    return;
  }
  if (child && (child->kind & kind_leaf) && !is_branch(*tool)) {
    // Once material went at this level, no later cell needs the check.
    const bool takes_volume = pass.removed || _options.touch_counts || (material_volume(*child) && holds_volume(*tool));
    if (!merge_material(*child, *tool)) return;
    pass.changed = true;
    pass.removed |= takes_volume;
    if (seen(child->corners) == corners_all_air) {
      set_child(k, nullptr, pass);
    } else {
      forget_caches(*child);
      if (_options.want_contours) {
        std::vector<contour_t> polygons = trace_leaf_polygons(*tool, true);
        clamp_to_surface_box(polygons, *child);
        for (contour_t& p : polygons) contours.push_back(std::move(p));
      }
    }
    return;
  }
  if (!material_solid(child, *stock, k)) return;
  if (_options.want_contours) trace_subtree(*tool, contours);
  pass.changed = true;
  pass.removed = pass.removed || _options.touch_counts || holds_volume(*tool);
  turn_to_material(*tool);
  tool->parent = stock;
  set_child(k, tool, pass);
}

void step_runner_t::empty_node(cube_node_t& node) const {
  node.children.store(nullptr);
  node.kind = _options.subtract ? kind_air : kind_solid;
  node.corners = seen(corners_all_air);
  for (auto& tip : node.tips) tip = no_tip;
}

// kids is the level's snapshot, kept up to date through its changes.
void step_runner_t::finish_level(const std::shared_ptr<cube_node_t>& stock, const child_snapshot_t& kids,
                                 level_t& result) {
  result.bits |= changed;
  stock->neighbours.reset();
  const std::optional<std::uint32_t> word = branch_corner_word(kids);
  forget_caches(*stock);
  if (!word) {
    empty_node(*stock);
    result.bits |= remove_me;
    return;
  }
  stock->corners = *word;
  summarise_branch_tips(*stock, kids);
  adopt_children(stock);
  bool all_cells = true;
  for (const auto& kid : kids) all_cells &= !kid || !is_branch(*kid);
  if (all_cells) try_collapse(*stock, split_mode, kids);
}

// The stock's resolution grows to the step's; a null or uniform root, or a
// root leaf that can't be split, leaves it untouched.
step_outcome_t run_on_stock(cube_tree_t& tree, step_runner_t& runner, std::span<const std::uint32_t> all,
                            bool subtracting) {
  step_outcome_t outcome{tree.resolution, false, {}};
  const std::shared_ptr<cube_node_t> root = tree.root.load();
  if (!root || (root->kind & 3) || ((root->kind & kind_leaf) && !split_leaf(root, split_mode))) return outcome;
  const level_t r = runner.branch(root, root_cell, all);
  outcome.touched = (r.bits & removed) != 0;
  outcome.contours = std::move(runner.contours);
  note_contours(subtracting, outcome.contours.size());
  return outcome;
}

std::uint32_t step_limit(cube_tree_t& tree, double grid_width) {
  if (grid_width == 0.0) grid_width = tree.grid_width();
  const auto limit = static_cast<std::uint32_t>(resolution_from_width(grid_width));
  tree.resolution = std::max<std::uint32_t>(tree.resolution, limit);
  return limit;
}

}  // namespace

step_outcome_t run_step(cube_tree_t& tree, const std::vector<tri_extension_t>& tool, double grid_width,
                        const step_options_t& options) {
  const std::uint32_t limit = step_limit(tree, grid_width);
  std::vector<std::uint32_t> all(tool.size());
  std::iota(all.begin(), all.end(), 0u);
  cell_tree_builder_t cells(tool, limit, line_reuse_t::frequent);
  step_runner_t runner(cells, limit, options);
  const std::shared_ptr<cube_node_t> root = tree.root.load();
  if (!options.subtract && (!root || root->kind == kind_air)) {
    // Adding to nothing: the tool's own cells are the stock.
    step_outcome_t outcome{tree.resolution, false, {}};
    std::shared_ptr<cube_node_t> built = runner.tool_tree(all);
    if (built && options.want_contours) {
      trace_subtree(*built, outcome.contours);
      note_contours(false, outcome.contours.size());
    }
    outcome.touched = built != nullptr;
    if (built) tree.root.store(std::move(built));
    return outcome;
  }
  return run_on_stock(tree, runner, all, options.subtract);
}

step_outcome_t run_stick_step(cube_tree_t& tree, const stick_tool_t& tool, double grid_width, bool want_contours,
                              bool touch_counts) {
  if (tool.empty()) return {0, false, {}};
  const std::uint32_t limit = step_limit(tree, grid_width);
  stick_cells_t cells(tool, limit);
  step_runner_t runner(cells, limit, {true, want_contours, touch_counts});
  // Every band goes to every cell the surface may reach.
  const std::uint32_t all[1] = {0};
  return run_on_stock(tree, runner, all, true);
}

}  // namespace cbtr
