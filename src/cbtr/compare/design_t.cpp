#include "cbtr/compare/design_t.h"

#include <cmath>

#include "cbtr/model/lattice.h"

namespace cbtr {

namespace {

lattice_point_t snapped(const std::array<double, 3>& p) {
  return {snap_to_lattice(p[0]), snap_to_lattice(p[1]), snap_to_lattice(p[2])};
}

std::array<double, 3> model(const lattice_point_t& p) {
  return {static_cast<double>(p[0]) * lattice_step + lattice_origin,
          static_cast<double>(p[1]) * lattice_step + lattice_origin,
          static_cast<double>(p[2]) * lattice_step + lattice_origin};
}

bool finite(const geom::stl_tri_t& t) {
  for (const auto* p : {&t.a, &t.b, &t.c})
    for (double x : *p)
      if (!std::isfinite(x)) return false;
  return true;
}

}  // namespace

std::int64_t snap_to_lattice(double x) { return std::llround((x - lattice_origin) / lattice_step); }

design_t::design_t(const geom::stl3d_t& mesh) {
  tris.reserve(mesh.tris.size());
  for (const geom::stl_tri_t& t : mesh.tris) {
    if (!finite(t)) continue;
    lattice_tri_t s;
    s.p = {snapped(t.a), snapped(t.b), snapped(t.c)};
    lattice_point_t u, v;
    for (int k = 0; k < 3; ++k) u[k] = s.p[1][k] - s.p[0][k], v[k] = s.p[2][k] - s.p[0][k];
    s.n = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
    if (s.n[0] == 0 && s.n[1] == 0 && s.n[2] == 0) continue;
    tris.push_back(s);
    soup.tris.push_back({model(s.p[0]), model(s.p[1]), model(s.p[2]), {0, 0, 0}});
  }
}

}  // namespace cbtr
