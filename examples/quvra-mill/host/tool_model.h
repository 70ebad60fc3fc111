#pragma once

// One cutter in the two forms the library sweeps: the welded floating mesh
// (for moves that turn the tool) and the exact mesh (for straight moves).

#include <memory>
#include <vector>

#include "cbtr/cached_tris.h"
#include "host/tool_pose.h"

namespace mill {

struct cached_tris_deleter_t {
  void operator()(cached_tris_t* t) const { delete_cached_tris(t); }
};
using cached_tris_ptr = std::unique_ptr<cached_tris_t, cached_tris_deleter_t>;

// The grid on which tool coordinates and poses become exact: a tenth of a
// micron, far below any cell, and coarse enough to keep the fractions short.
constexpr double fraction_grid = 1e-4;

class tool_model_t {
 public:
  // surface: triangle records of a closed surface (twelve doubles each).
  // Throws std::runtime_error when the library cannot make either mesh.
  explicit tool_model_t(const std::vector<double>& surface);

  // The volume swept from start to end: the exact translation sweep, or the
  // convex sweep when the rotations differ. Owned by the caller. Throws
  // std::runtime_error when the library returns nothing.
  cached_tris_ptr sweep(const pose_t& start, const pose_t& end) const;

 private:
  struct mesh_deleter_t {
    void operator()(topo_stl3d* m) const { topo_stl3d__delete(m); }
    void operator()(topo_stl3wfr_t* m) const { topo_stl3wfr__delete(m); }
  };
  std::unique_ptr<topo_stl3d, mesh_deleter_t> mesh_;
  std::unique_ptr<topo_stl3wfr_t, mesh_deleter_t> exact_;
};

}  // namespace mill
