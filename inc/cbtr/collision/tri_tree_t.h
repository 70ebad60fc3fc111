#pragma once

// A triangle soup sorted into an octree on the stock's lattice, for
// collision queries between rigid bodies.
//
// The root is the lattice's whole cube (level 0, half-edge 65536 model
// units, centre 2^26 on each axis). A node is split into the octants that
// its triangles reach, a triangle going into every octant its box test
// touches, down to level 15 (half-edge 2 units) while a node holds three
// triangles or more, and at most to level 20 (1/16 unit). Only leaves keep
// triangles.

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "cbtr/collision.h"
#include "cbtr/model/lattice.h"
#include "geom/stl3d_t.h"

namespace cbtr {

struct tri_node_t {
  tri_node_t(const tri_node_t* parent_node, std::uint32_t cx, std::uint32_t cy, std::uint32_t cz)
      : parent(parent_node), ix(cx), iy(cy), iz(cz) {}

  int level() const { return depth_of_centre(ix); }
  bool is_leaf() const {
    for (const auto& c : child)
      if (c) return false;
    return true;
  }

  const tri_node_t* parent;
  std::uint32_t ix, iy, iz;                         // centre on the lattice
  std::array<std::unique_ptr<tri_node_t>, 8> child;  // by octant; null where empty
  std::vector<const tri_sat_t*> tris;               // leaves only
};

// When a node stops splitting: at leaf_level, or from few_level on while it
// holds fewer than few triangles.
struct tri_leaf_rule_t {
  int few_level = 15;
  std::size_t few = 3;
  int leaf_level = 20;
};

struct tri_tree_t {
  // Reads mesh's records in place: mesh must outlive the tree unchanged.
  explicit tri_tree_t(const geom::stl3d_t& mesh, const tri_leaf_rule_t& rule = {});

  const double* tris;  // first record of the source soup
  std::size_t count;
  tri_node_t root;
  std::vector<tri_sat_t> sats;  // one per record, in its order
};

}  // namespace cbtr
