#include "geom/topo/mesh_vertices.h"

namespace geom {

std::vector<double> edge_line_vertices(topo_stl3d& mesh) {
  const double round_cos_sq = mesh.round_cos() * mesh.round_cos();
  std::vector<double> out;
  for (topo_stl3d::line_t& line : mesh.lines()) {
    if (mesh.bend(line) > round_cos_sq) continue;
    for (const topo_stl3d::point_t* p : {line.p0, line.p1}) out.insert(out.end(), {p->x, p->y, p->z});
  }
  return out;
}

std::vector<double> lit_tri_vertices(topo_stl3d& mesh) {
  std::vector<double> out;
  out.reserve(mesh.tri_count() * 18);
  for (topo_stl3d::tri_t& tri : mesh.tris()) {
    const std::array<vec3d, 3>& normals = mesh.vertex_normals(tri);
    const std::array<topo_stl3d::point_t*, 3> corners = tri.corners();
    for (int k = 0; k < 3; ++k)
      out.insert(out.end(), {normals[k].x, normals[k].y, normals[k].z, corners[k]->x, corners[k]->y, corners[k]->z});
  }
  return out;
}

}  // namespace geom
