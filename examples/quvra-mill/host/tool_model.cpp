#include "host/tool_model.h"

#include <stdexcept>

namespace mill {

tool_model_t::tool_model_t(const std::vector<double>& surface) {
  const auto count = static_cast<std::int32_t>(surface.size() / 12);
  mesh_.reset(topo_stl3d__ctor(count, surface.data()));
  exact_.reset(topo_stl3wfr__new(count, surface.data(), fraction_grid));
  if (!mesh_ || !exact_) throw std::runtime_error("the library could not make the tool's mesh");
}

cached_tris_ptr tool_model_t::sweep(const pose_t& start, const pose_t& end) const {
  cached_tris_ptr tris(
      new_sweeping_cached_tris(mesh_.get(), exact_.get(), start.data(), end.data(), fraction_grid, true));
  if (!tris) throw std::runtime_error("the library could not make a tool volume");
  return tris;
}

}  // namespace mill
