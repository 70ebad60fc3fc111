#pragma once

// Which triangles lie in one plane with one sense, decided exactly and
// remembered for the life of a build or step. A flat face is cut into
// triangles of many sizes, whose exact normals differ in length, so only an
// exact test can say that a cell meets a single plane; it runs once per pair
// of classes, and doubles reject the pairs that are plainly apart.

#include <cstdint>
#include <vector>

#include "cbtr/build/tri_extension_t.h"

namespace cbtr {

class plane_classes_t {
 public:
  explicit plane_classes_t(const std::vector<tri_extension_t>& tris);

  // Triangles a and b lie in one plane and face the same way. A triangle
  // without area lies in no plane.
  bool coplanar(std::uint32_t a, std::uint32_t b);

 private:
  std::uint32_t root(std::uint32_t i);
  bool exactly_coplanar(const tri_extension_t& a, const tri_extension_t& b) const;

  const std::vector<tri_extension_t>& _tris;
  std::vector<std::uint32_t> _parent;  // union-find over proven pairs
};

}  // namespace cbtr
