#include "cbtr/build/plane_classes_t.h"

#include <cmath>
#include <numeric>

namespace cbtr {

namespace {

// Unit normals of one exact direction agree to rounding; farther apart, the
// planes are surely not parallel.
constexpr double unit_normal_slack = 1e-12;

bool plainly_apart(const tri_extension_t& a, const tri_extension_t& b) {
  const vec3d& m = a.tri.unit_normal;
  const vec3d& n = b.tri.unit_normal;
  return std::abs(m.x - n.x) > unit_normal_slack || std::abs(m.y - n.y) > unit_normal_slack ||
         std::abs(m.z - n.z) > unit_normal_slack;
}

}  // namespace

plane_classes_t::plane_classes_t(const std::vector<tri_extension_t>& tris) : _tris(tris), _parent(tris.size()) {
  std::iota(_parent.begin(), _parent.end(), 0u);
}

std::uint32_t plane_classes_t::root(std::uint32_t i) {
  while (_parent[i] != i) {
    _parent[i] = _parent[_parent[i]];
    i = _parent[i];
  }
  return i;
}

bool plane_classes_t::exactly_coplanar(const tri_extension_t& a, const tri_extension_t& b) const {
  if (a.has_no_area() || b.has_no_area() || a.normal_sign != b.normal_sign) return false;
  return geom::is_parallel(a.tri.normal, b.tri.normal) && dot(a.tri.normal, b.tri.a - a.tri.a).is_zero();
}

bool plane_classes_t::coplanar(std::uint32_t a, std::uint32_t b) {
  const std::uint32_t ra = root(a), rb = root(b);
  if (ra == rb) return !_tris[a].has_no_area();
  if (plainly_apart(_tris[ra], _tris[rb]) || !exactly_coplanar(_tris[ra], _tris[rb])) return false;
  _parent[rb] = ra;
  return true;
}

}  // namespace cbtr
