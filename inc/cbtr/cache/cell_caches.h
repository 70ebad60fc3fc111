#pragma once

// The two process-wide caches that every cube tree shares: the triangles of
// cells (charged 112 bytes a triangle) and their vertex drawings (charged 40
// bytes a vertex), with the numbers the display derives from their caps.
// The charges are accounting units; true memory is larger, and a host sets
// the caps with that in mind.

#include <cstdint>

#include "common/cache_t.h"

namespace cbtr {

class cube_tree_t;

inline constexpr std::uint64_t tri_cost_bytes = 112;
inline constexpr std::uint64_t vertex_cost_bytes = 40;

// Holds nothing until a host sets its cap: each new entry evicts the rest.
common::lru_cache_t& tris_cache();
// Starts with a cap of 250 MiB.
common::lru_cache_t& drawing_cache();

// Sets the drawing cache's cap, and from it the number of cells per depth
// that a view may show: (cap >> 5) / 14580.
void set_rendering_cap(std::uint64_t cap_bytes);
// 0 until set_rendering_cap is called; a view then draws the root depth only.
std::uint64_t node_limit();

// Goes up whenever drawings may have been dropped, so that display code can
// tell that what it kept from earlier frames is stale.
std::uint64_t drawing_epoch();
void raise_drawing_epoch();

// Empties the drawing cache's list and raises the epoch.
void clear_drawing_cache();

// Lets go of the triangles and drawings of every cell of tree, and raises the
// epoch. Entries stay listed (and counted) until the caches evict them;
// other trees keep theirs.
void free_display_caches(const cube_tree_t& tree);

}  // namespace cbtr
