#pragma once

// Vertex layouts ("rails"): which components of a vertex hold what. T is the
// component type, stride the number of T per vertex, and the other numbers
// the index of an attribute's first component, -1 where it is absent.
// Position, normal and colour take three components; the pick takes one slot
// of T holding an unsigned 32-bit id in its low bytes (the rest zero). In a
// vertex the order is always pick, colour, normal, position.

#include <cstddef>
#include <cstdint>

#include "disp/programs.h"

namespace disp {

template <class T, int Stride, int Vertex, int Normal, int Color, int Pick>
struct rail {
  using value_type = T;
  static constexpr int stride = Stride;
  static constexpr int vertex = Vertex;
  static constexpr int normal = Normal;
  static constexpr int color = Color;
  static constexpr int pick = Pick;
  static constexpr std::size_t vertex_bytes = sizeof(T) * Stride;

  // The program whose inputs the rail feeds.
  static const geometry_program_t& program() {
    const program_set_t& set = programs();
    if constexpr (Color >= 0) return Normal >= 0 ? set.colored_lit : set.colored;
    return Normal >= 0 ? set.lit : set.flat;
  }
};

// Alias templates, so that one drawing template serves both component types.
template <class T>
using rail_v = rail<T, 3, 0, -1, -1, -1>;
template <class T>
using rail_nv = rail<T, 6, 3, 0, -1, -1>;
template <class T>
using rail_cv = rail<T, 6, 3, -1, 0, -1>;
template <class T>
using rail_cnv = rail<T, 9, 6, 3, 0, -1>;
template <class T>
using rail_pv = rail<T, 4, 1, -1, -1, 0>;
template <class T>
using rail_pnv = rail<T, 7, 4, 1, -1, 0>;
template <class T>
using rail_pcv = rail<T, 7, 4, -1, 1, 0>;
template <class T>
using rail_pcnv = rail<T, 10, 7, 4, 1, 0>;

// The double rails by their number at the flat boundary: fn is called with
// a value of the rail type. False, with fn not called, for a kind above 7.
template <class Fn>
bool with_rail_kind(std::uint32_t kind, Fn&& fn) {
  switch (kind) {
    case 0:
      fn(rail_v<double>{});
      return true;
    case 1:
      fn(rail_nv<double>{});
      return true;
    case 2:
      fn(rail_cv<double>{});
      return true;
    case 3:
      fn(rail_cnv<double>{});
      return true;
    case 4:
      fn(rail_pv<double>{});
      return true;
    case 5:
      fn(rail_pnv<double>{});
      return true;
    case 6:
      fn(rail_pcv<double>{});
      return true;
    case 7:
      fn(rail_pcnv<double>{});
      return true;
    default:
      return false;
  }
}

}  // namespace disp
