#include "cbtr/tool/tool_tri.h"

#include <cmath>
#include <limits>

namespace cbtr {

geom::vec3fr reduced_cross(const geom::vec3fr& a, const geom::vec3fr& b, const geom::vec3fr& c) {
  geom::vec3fr n = cross(b - a, c - a);
  n.x.pack();
  n.y.pack();
  n.z.pack();
  return n;
}

bool is_zero(const geom::vec3fr& v) { return v.x.is_zero() && v.y.is_zero() && v.z.is_zero(); }

geom::vec3d unit_of(geom::vec3fr& n) {
  const geom::vec3d d = geom::to_vec3d(n);
  const double length = std::sqrt(d.x * d.x + d.y * d.y + d.z * d.z);
  return {d.x / length, d.y / length, d.z / length};
}

tool_tri_t make_tool_tri(const geom::vec3fr& a, const geom::vec3fr& b, const geom::vec3fr& c,
                         const geom::vec3fr& normal) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  return {a, b, c, normal, {nan, nan, nan}};
}

}  // namespace cbtr
