#pragma once

// Each distinct mesh point converted to an exact point once: a vertex is
// shared by about six triangles, and the conversion is the dearest step of
// building a tool volume.

#include <cstddef>
#include <unordered_map>

#include "geom/fraction_geom_util"

namespace cbtr {

template <class Point, class Convert>
class point_cache {
 public:
  point_cache(std::size_t expected, Convert convert) : _convert(convert) { _done.reserve(expected); }

  // Stays valid for the life of the cache.
  const geom::vec3fr& operator()(const Point* p) {
    auto [it, fresh] = _done.try_emplace(p);
    if (fresh) it->second = _convert(*p);
    return it->second;
  }

 private:
  Convert _convert;
  std::unordered_map<const Point*, geom::vec3fr> _done;
};

}  // namespace cbtr
