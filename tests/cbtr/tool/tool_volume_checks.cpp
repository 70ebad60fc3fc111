#include "tool_volume_checks.h"

#include <map>
#include <unordered_map>
#include <utility>

namespace quvra_test {

namespace {

struct point_hash {
  std::size_t operator()(const geom::vec3fr& p) const {
    geom::vec3fr copy = p;
    return geom::hash(copy);
  }
};

}  // namespace

std::string closure_fault(const cbtr::tool_tris_t& tris) {
  std::unordered_map<geom::vec3fr, int, point_hash> ids;
  const auto id = [&](const geom::vec3fr& p) { return ids.try_emplace(p, static_cast<int>(ids.size())).first->second; };
  std::map<std::pair<int, int>, int> edges;
  for (const auto& t : tris) {
    const int v[3] = {id(t.a), id(t.b), id(t.c)};
    for (int k = 0; k < 3; ++k) ++edges[{v[k], v[(k + 1) % 3]}];
  }
  for (const auto& [edge, count] : edges) {
    if (count != 1) return "edge used " + std::to_string(count) + " times";
    const auto twin = edges.find({edge.second, edge.first});
    if (twin == edges.end()) return "edge without a twin";
  }
  return {};
}

geom::fr exact_volume(const cbtr::tool_tris_t& tris, const geom::vec3fr& ref) {
  geom::fr sum = geom::fr::zero();
  for (const auto& t : tris) sum += dot(t.a - ref, cross(t.b - ref, t.c - ref));
  sum /= geom::fr(6);
  sum.pack();
  return sum;
}

bool normals_follow_corners(const cbtr::tool_tris_t& tris) {
  for (const auto& t : tris) {
    const geom::vec3fr n = cross(t.b - t.a, t.c - t.a);
    if (!geom::is_parallel(n, t.normal) || dot(n, t.normal).sign() <= 0) return false;
  }
  return true;
}

geom::vec3fr exact_point(double x, double y, double z) {
  return {geom::from_double(x, 1e-9), geom::from_double(y, 1e-9), geom::from_double(z, 1e-9)};
}

}  // namespace quvra_test
