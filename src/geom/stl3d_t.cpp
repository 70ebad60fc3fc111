#include "geom/stl3d_t.h"

#include <cstring>

#include "common/check.h"
#include "geom/stl_readers.h"

namespace geom {

stl3d_t::stl3d_t(const double* records, std::size_t count) {
  if (count == 0) return;
  tris.resize(count);
  std::memcpy(tris.data(), records, count * sizeof(stl_tri_t));
}

stl3d_t::stl3d_t(const std::string& path) {
  const stl_status status = read_file(path);
  if (status != stl_status::ok) QV_WARN("stl_process_status[" + std::to_string(static_cast<int>(status)) + "]:" + path);
}

stl_status stl3d_t::read_file(const std::string& path) { return read_stl_file(path, tris); }

void stl3d_t::expand_to_box3d(double* box) const {
  for (const stl_tri_t& tri : tris) {
    for (const std::array<double, 3>* v : {&tri.a, &tri.b, &tri.c}) {
      for (int k = 0; k < 3; ++k) {
        if (box[k] > (*v)[k]) box[k] = (*v)[k];
        if ((*v)[k] > box[k + 3]) box[k + 3] = (*v)[k];
      }
    }
  }
}

}  // namespace geom
