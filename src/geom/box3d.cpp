#include "geom/box3d.h"

namespace geom {

box3d moved_box(const box3d& b, const mat4d& m) {
  box3d out;
  if (b.is_empty()) return out;
  for (int k = 0; k < 8; ++k) out.expand(m.apply(vec3d{b.v[k & 1 ? 3 : 0], b.v[k & 2 ? 4 : 1], b.v[k & 4 ? 5 : 2]}));
  return out;
}

}  // namespace geom
