#ifndef QUVRA_GEOM_STL3D_HOLDER_H
#define QUVRA_GEOM_STL3D_HOLDER_H

/* How tool shapes hand a soup out of the library (mech::apt_t::get_Stl3d):
   one owning pointer, which frees the soup with stl3d__delete. Read it with
   the stl3d__ family: stl3d__tris_size(holder.stl.get()). C++ hosts only. */

#include <memory>

#include "geom/stl3d.h"

namespace geom {

struct stl3d_deleter {
  void operator()(stl3d_t* soup) const noexcept { stl3d__delete(soup); }
};

using stl3d_ptr = std::unique_ptr<stl3d_t, stl3d_deleter>;

struct Stl3d {
  stl3d_ptr stl;
};

}  // namespace geom

#endif
