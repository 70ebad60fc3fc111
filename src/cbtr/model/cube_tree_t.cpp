#include "cbtr/model/cube_tree_t.h"

namespace cbtr {

namespace {

// Attachments outlive the cells they colour and keep maps of them, so the
// cells let go of them before the tree goes.
void detach_attachments(cube_node_t& node) {
  node.attachment = nullptr;
  for (const std::shared_ptr<cube_node_t>& child : snapshot_children(node))
    if (child) detach_attachments(*child);
}

}  // namespace

cube_tree_t::~cube_tree_t() {
  if (const std::shared_ptr<cube_node_t> r = root.load()) detach_attachments(*r);
}

void adopt_children(const std::shared_ptr<cube_node_t>& node) {
  for (const std::shared_ptr<cube_node_t>& child : snapshot_children(*node))
    if (child) child->parent = node;
}

}  // namespace cbtr
