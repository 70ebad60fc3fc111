#include "geom/topo_stl3d.h"

#include "common/new_nothrow.h"
#include "geom/topo/topo_stl3.h"

extern "C" {

topo_stl3d* topo_stl3d__new_by_stl3d(const stl3d_t* soup) noexcept {
  if (!soup) return nullptr;
  return common::new_nothrow<geom::topo_stl3d>(*soup);
}

topo_stl3d* topo_stl3d__new_by_filepath(const std::string& path) noexcept {
  try {
    const geom::stl3d_t soup(path);
    return common::new_nothrow<geom::topo_stl3d>(soup);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

topo_stl3d* topo_stl3d__ctor(int32_t count, const double* tris) noexcept {
  if (count < 0 || (count > 0 && !tris)) return nullptr;
  return common::new_nothrow<geom::topo_stl3d>(tris, static_cast<std::size_t>(count));
}

void topo_stl3d__delete(topo_stl3d* mesh) noexcept { delete mesh; }

void topo_stl3d__dtor(topo_stl3d* mesh) noexcept __attribute__((alias("topo_stl3d__delete")));

int32_t topo_stl3d__count(const topo_stl3d* mesh) noexcept {
  return mesh ? static_cast<int32_t>(mesh->tri_count()) : 0;
}

void topo_stl3d__get_tris(topo_stl3d* mesh, double* out) noexcept {
  if (mesh && out) mesh->get_tris(out);
}

double topo_stl3d__get_round_cos(const topo_stl3d* mesh) noexcept {
  return mesh ? mesh->round_cos() : geom::topo_stl3d::default_round_cos;
}

void topo_stl3d__set_round_cos(topo_stl3d* mesh, double round_cos) noexcept {
  if (mesh) mesh->set_round_cos(round_cos);
}

void topo_stl3d__expand_to_box3d(topo_stl3d* mesh, double* box) noexcept {
  if (mesh && box) mesh->expand_to_box3d(reinterpret_cast<geom::box3d*>(box));
}

void topo_stl3d__expand_to_box3d_by_mat(topo_stl3d* mesh, double* box, const geom::mat4d* mat) noexcept {
  if (mesh && box && mat) mesh->expand_to_box3d(reinterpret_cast<geom::box3d*>(box), mat);
}

void topo_stl3d__render(topo_stl3d* mesh, disp::bind* b) noexcept {
  if (mesh && b) mesh->display(b);
}

void topo_stl3d__render_by_mat(topo_stl3d* mesh, disp::bind* b, const geom::mat4d* mat) noexcept {
  if (mesh && b && mat) mesh->display(b, mat);
}

void topo_stl3d__render_edges(topo_stl3d* mesh, disp::bind* b) noexcept {
  if (mesh && b) mesh->display_edges(b);
}
}
