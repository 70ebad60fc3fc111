#pragma once

// One cell of the stock: the side of the stock each of its eight corners lies
// on, and for each of its twelve edges whose corners differ, the exact model
// coordinate where the surface crosses it (its tip). Everything else about
// the surface is derived from these two.
//
// The display thread walks the tree while a step changes it, so the links
// are atomic shared pointers (a walker holds a snapshot for as long as it
// looks, and a replaced node lives on until it lets go), and kind, corners
// and tips are relaxed values: a reader may see a mix of old and new fields
// for one frame, which the next frame corrects.
//
// A null child slot of a branch is a uniform child whose state is not
// stored: it is corner k of the parent for child k.

#include <array>
#include <atomic>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include "cbtr/model/cell_numbering.h"
#include "cbtr/model/cube_tri_t.h"
#include "cbtr/model/lattice.h"
#include "common/cache_t.h"
#include "common/relaxed_t.h"

namespace cbtr {

struct cbtr_attachment_t;
struct cell_drawing_t;  // the vertex drawing of one cell, made by the display

using tri_entry_t = common::cache_t<std::vector<cube_tri_t>>;
using drawing_entry_t = common::cache_t<cell_drawing_t>;

struct cube_node_t {
  using slot_t = std::atomic<std::shared_ptr<cube_node_t>>;
  using children_t = std::array<slot_t, 8>;
  using tips_t = std::array<common::relaxed_t<double>, 12>;

  cube_node_t(std::weak_ptr<cube_node_t> parent_node, std::uint32_t cx, std::uint32_t cy, std::uint32_t cz);

  int depth() const { return depth_of_centre(x); }

  std::weak_ptr<cube_node_t> parent;
  std::atomic<std::shared_ptr<children_t>> children;  // null on leaves and uniform nodes
  std::uint32_t x, y, z;                              // lattice centre; fixed for life
  common::relaxed_t<std::int32_t> kind = kind_unset;
  common::relaxed_t<std::uint32_t> corners = 0;
  tips_t tips;  // NaN where the edge has no crossing
  // Derived from kind, corners and tips; held weakly, since the global caches
  // decide how long they live. Emptied whenever the cell changes.
  mutable std::atomic<std::weak_ptr<tri_entry_t>> tri_cache;
  mutable std::atomic<std::weak_ptr<drawing_entry_t>> draw_cache;
  cbtr_attachment_t* attachment = nullptr;
  // Neighbour per axis and side, filled lazily, dropped when children change.
  std::unique_ptr<std::array<std::weak_ptr<cube_node_t>, 6>> neighbours;
};

inline constexpr double no_tip = std::numeric_limits<double>::quiet_NaN();

// The children of node as counted pointers, each slot loaded atomically;
// all null for a node without children.
std::array<std::shared_ptr<cube_node_t>, 8> snapshot_children(const cube_node_t& node);
// The same from slots already loaded; all null for null slots.
std::array<std::shared_ptr<cube_node_t>, 8> snapshot_slots(const std::shared_ptr<cube_node_t::children_t>& slots);

// Model box of the cell: min x, y, z, then max x, y, z, all exact.
std::array<double, 6> cell_box(const cube_node_t& node);

// Model point of the tip of edge e: the tip on the edge's axis, the cell's
// sides on the other two.
std::array<double, 3> tip_point(const cube_node_t& node, int e);

}  // namespace cbtr
