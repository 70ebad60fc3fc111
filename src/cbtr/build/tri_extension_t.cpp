#include "cbtr/build/tri_extension_t.h"

#include <algorithm>
#include <cmath>

namespace cbtr {

namespace {

void pack_all(vec3fr& v) {
  v.x.pack();
  v.y.pack();
  v.z.pack();
}

bool has_direction(const vec3fr& n) { return n.x.sign() != 0 || n.y.sign() != 0 || n.z.sign() != 0; }

}  // namespace

tri_extension_t::tri_extension_t(exact_tri_t t) : tri(std::move(t)) {
  pack_all(tri.a);
  pack_all(tri.b);
  pack_all(tri.c);
  // A tool volume's triangles come with their normal (any length, right
  // direction and sense); a soup's are computed here.
  if (!has_direction(tri.normal)) tri.normal = geom::cross(tri.b - tri.a, tri.c - tri.a);
  pack_all(tri.normal);
  corner_d = {geom::to_vec3d(tri.a), geom::to_vec3d(tri.b), geom::to_vec3d(tri.c)};
  lo = hi = corner_d[0];
  for (const vec3d& c : corner_d) {
    lo = {std::min(lo.x, c.x), std::min(lo.y, c.y), std::min(lo.z, c.z)};
    hi = {std::max(hi.x, c.x), std::max(hi.y, c.y), std::max(hi.z, c.z)};
  }
  normal_d = geom::to_vec3d(tri.normal);
  normal_sign = {tri.normal.x.sign(), tri.normal.y.sign(), tri.normal.z.sign()};
  const double len = std::sqrt(geom::dot(normal_d, normal_d));
  tri.unit_normal = {normal_d.x / len, normal_d.y / len, normal_d.z / len};
  plane_d = geom::dot(tri.normal, tri.a);
  plane_d.pack();
  plane_dd = plane_d.value();
}

}  // namespace cbtr
