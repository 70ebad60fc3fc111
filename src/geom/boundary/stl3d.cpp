#include "geom/stl3d.h"

#include <vector>

#include "common/new_nothrow.h"
#include "geom/stl3d_t.h"

extern "C" {

stl3d_t* stl3d__new(void) noexcept { return common::new_nothrow<geom::stl3d_t>(); }

stl3d_t* stl3d__new_by_copy_array(const double* tris, uint64_t count) noexcept {
  if (!tris && count != 0) return nullptr;
  // A count whose byte size overflows is more memory than there is.
  if (count > std::vector<geom::stl_tri_t>().max_size()) return nullptr;
  return common::new_nothrow<geom::stl3d_t>(tris, static_cast<std::size_t>(count));
}

stl3d_t* stl3d__new_by_file(const std::string& path) noexcept { return common::new_nothrow<geom::stl3d_t>(path); }

int32_t stl3d__read_file(const std::string& path, stl3d_t* mesh) noexcept {
  if (!mesh) return static_cast<int32_t>(geom::stl_status::open_failed);
  try {
    return static_cast<int32_t>(mesh->read_file(path));
  } catch (const std::bad_alloc&) {
    // What was appended before memory ran out stays, as for any failed read.
    return static_cast<int32_t>(geom::stl_status::malformed);
  }
}

uint64_t stl3d__tris_size(const stl3d_t* mesh) noexcept { return mesh ? mesh->tris.size() : 0; }

const double* stl3d__tris_data(const stl3d_t* mesh) noexcept {
  return mesh ? reinterpret_cast<const double*>(mesh->tris.data()) : nullptr;
}

void stl3d__expand_to_box3d(const stl3d_t* mesh, double* box) noexcept {
  if (mesh && box) mesh->expand_to_box3d(box);
}

void stl3d__delete(stl3d_t* mesh) noexcept { delete mesh; }
}
