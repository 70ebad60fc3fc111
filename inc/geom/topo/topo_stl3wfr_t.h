#pragma once

// The exact mesh as hosts and the carve hold it.

#include "geom/topo/topo_stl3fr_t.h"

namespace geom {

class topo_stl3wfr_t : public topo_stl3fr_t<fr> {
 public:
  using topo_stl3fr_t<fr>::topo_stl3fr_t;
};

}  // namespace geom
