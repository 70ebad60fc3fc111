#pragma once

// How tool shapes hand a soup out of the library (apt_t::get_Stl3d): one
// owning pointer.

#include <memory>

#include "geom/stl3d_t.h"

namespace geom {

struct Stl3d {
  std::unique_ptr<stl3d_t> stl;
};

}  // namespace geom
