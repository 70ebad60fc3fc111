#pragma once

// Depth-first walks over counted snapshots, so that a walker may run while a
// step replaces nodes: what it visits stays alive while it looks.

#include <memory>

#include "cbtr/model/cube_node_t.h"
#include "cbtr/model/cube_tree_t.h"

namespace cbtr {

// fn(const cube_node_t&) for node and every node below it, parents first.
template <class Fn>
void for_each_node(const cube_node_t& node, Fn& fn) {
  fn(node);
  for (const std::shared_ptr<cube_node_t>& child : snapshot_children(node))
    if (child) for_each_node(*child, fn);
}

// fn(const cube_node_t&) for every node of tree; nothing for an empty tree.
template <class Fn>
void for_each_node(const cube_tree_t& tree, Fn&& fn) {
  if (const std::shared_ptr<cube_node_t> root = tree.root.load()) for_each_node(*root, fn);
}

// fn(const cube_node_t&) for every leaf (kind & 4) of tree.
template <class Fn>
void for_each_leaf(const cube_tree_t& tree, Fn&& fn) {
  for_each_node(tree, [&fn](const cube_node_t& node) {
    if (node.kind & kind_leaf) fn(node);
  });
}

}  // namespace cbtr
