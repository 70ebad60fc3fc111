#pragma once

// Rigid body against rigid body with one pose: a fixed-grid triangle tree or
// a stock on the A side, a triangle tree on the B side, placed into A's
// frame by m. Both trees are descended together; a pair of nodes is judged
// by the distance of their centres, with a sphere around the moved B node
// (so no box is ever rotated) and A's own half-edge.
//
// Flags: 0 contact, 1 near (within the clearance, or too near for the grid
// to tell), 2 apart by more than the clearance, 4 a uniform stock cell at
// the top. Triangle pairs met in several leaves are tested once.

#include <cstddef>

#include "cbtr/collision/tri_tree_t.h"
#include "cbtr/model/cube_tree_t.h"
#include "geom/mat4d.h"

namespace cbtr {

inline constexpr int flag_contact = 0;
inline constexpr int flag_near = 1;
inline constexpr int flag_apart = 2;
inline constexpr int flag_uniform = 4;

int collision_flag(const tri_tree_t& a, const tri_tree_t& b, const geom::mat4d& m, double clearance,
                   std::size_t pair_hint);

// A lower bound of the distance: -infinity on contact; the search stops
// refining once the squared bound passes 2 + 2 sqrt 3.
double at_least_distance(const tri_tree_t& a, const tri_tree_t& b, const geom::mat4d& m, std::size_t pair_hint);

// Only the stock's surface takes part: a body inside the solid or in the air
// without crossing the surface gives 1 or 2. An empty stock gives 2.
int collision_flag(const cube_tree_t& a, const tri_tree_t& b, const geom::mat4d& m, double clearance,
                   std::size_t pair_hint);

}  // namespace cbtr
