#include "geom/topo_stl3wfr.h"

#include <cmath>

#include "common/new_nothrow.h"
#include "geom/coordinate_limit.h"
#include "geom/topo/topo_stl3wfr_t.h"

extern "C" {

topo_stl3wfr_t* topo_stl3wfr__new(int32_t count, const double* tris, double resolution) noexcept {
  if (count < 0 || (count > 0 && !tris)) return nullptr;
  if (!geom::resolution_within_limit(resolution)) return nullptr;
  if (!geom::records_within_limit(tris, static_cast<std::size_t>(count))) return nullptr;
  return common::new_nothrow<geom::topo_stl3wfr_t>(tris, static_cast<std::size_t>(count), resolution);
}

uint64_t topo_stl3wfr__tris_size(const topo_stl3wfr_t* mesh) noexcept { return mesh ? mesh->tris_size() : 0; }

void topo_stl3wfr__get_tris(topo_stl3wfr_t* mesh, double* out) noexcept {
  if (mesh && out) mesh->get_tris(out);
}

void topo_stl3wfr__expand_to_box3d(topo_stl3wfr_t* mesh, double* box) noexcept {
  if (mesh && box) mesh->expand_to_box3d(reinterpret_cast<geom::box3d*>(box));
}

void topo_stl3wfr__delete(topo_stl3wfr_t* mesh) noexcept { delete mesh; }
}
