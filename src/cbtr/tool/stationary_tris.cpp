#include "cbtr/tool/stationary_tris.h"

#include "cbtr/tool/point_cache.h"

namespace cbtr {

namespace {

// Appends the triangle a b c unless its normal is exactly zero.
void append_if_proper(tool_tris_t& out, const geom::vec3fr& a, const geom::vec3fr& b, const geom::vec3fr& c) {
  geom::vec3fr n = reduced_cross(a, b, c);
  if (is_zero(n)) return;
  tool_tri_t& t = out.emplace_back(make_tool_tri(a, b, c, n));
  t.unit_normal = unit_of(t.normal);
}

}  // namespace

tool_tris_t build_stationary(geom::topo_stl3d& mesh, const geom::mat4d& pose, double resolution) {
  tool_tris_t out;
  out.reserve(mesh.tri_count());
  const auto convert = [&](const geom::topo_point3<double>& p) { return snap(pose.apply(p.pos()), resolution); };
  point_cache<geom::topo_point3<double>, decltype(convert)> exact(mesh.point_count(), convert);
  for (const geom::topo_tri3<double>& t : mesh.tris()) {
    append_if_proper(out, exact(t.a), exact(t.b), exact(t.c));
  }
  return out;
}

tool_tris_t build_stationary_exact(geom::topo_stl3wfr_t& mesh, const exact_pose_t& pose) {
  using point_t = geom::topo_stl3wfr_t::point_t;
  tool_tris_t out;
  out.reserve(mesh.tris_size());
  const auto convert = [&](const point_t& p) { return transform(pose, p.pos); };
  point_cache<point_t, decltype(convert)> exact(mesh.points_size(), convert);
  for (const auto* t = mesh.tri_stock().first(); t; t = t->next) {
    append_if_proper(out, exact(t->p[0]), exact(t->p[1]), exact(t->p[2]));
  }
  return out;
}

}  // namespace cbtr
