#pragma once

// Small helpers on floating vectors shared by the milling physics.

#include <cmath>

#include "geom/vec3.h"

namespace mech {

inline geom::vec3d unit(const geom::vec3d& v) { return v * (1.0 / std::sqrt(geom::dot(v, v))); }

inline bool is_finite(const geom::vec3d& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }

}  // namespace mech
