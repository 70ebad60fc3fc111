#pragma once

// What the exact subsystems accept from a host: coordinates within
// max_coordinate model units of the origin (a thousand metres each way for a
// machine in millimetres), snapped on grids no finer than min_resolution.
// Within both, every coordinate becomes a fraction in a few dozen steps; the
// boundary refuses anything beyond them with null or an untouched result.

#include <cstddef>
#include <vector>

#include "geom/mat4d.h"
#include "geom/stl3d_t.h"

namespace geom {

inline constexpr double max_coordinate = 1e6;
inline constexpr double min_resolution = 0x1p-48;

// False for NaN and infinities too.
bool coordinate_within_limit(double v);
bool resolution_within_limit(double r);

// The nine corner coordinates of each of count twelve-double records (the
// normals are not used).
bool records_within_limit(const double* records, std::size_t count);
bool records_within_limit(const std::vector<stl_tri_t>& tris);

// Every entry of a pose: rotation and translation alike.
bool pose_within_limit(const mat4d& pose);

}  // namespace geom
