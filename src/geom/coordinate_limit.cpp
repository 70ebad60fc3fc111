#include "geom/coordinate_limit.h"

#include <algorithm>
#include <cmath>

namespace geom {

bool coordinate_within_limit(double v) { return std::fabs(v) <= max_coordinate; }

bool resolution_within_limit(double r) { return r >= min_resolution && std::isfinite(r); }

bool records_within_limit(const double* records, std::size_t count) {
  for (std::size_t t = 0; t < count; ++t)
    if (!std::all_of(records + 12 * t, records + 12 * t + 9, coordinate_within_limit)) return false;
  return true;
}

bool records_within_limit(const std::vector<stl_tri_t>& tris) {
  return records_within_limit(tris.empty() ? nullptr : tris.front().a.data(), tris.size());
}

bool pose_within_limit(const mat4d& pose) { return std::all_of(pose.m.begin(), pose.m.end(), coordinate_within_limit); }

}  // namespace geom
