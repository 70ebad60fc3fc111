#pragma once

// Hashes by which meshes weld equal points and find lines by their ends.
// 0.0 and -0.0 hash alike, because they compare equal and must weld.

#include <cstddef>
#include <cstdint>

namespace geom {

// FNV-1a over the eight bytes of v.
std::size_t hash_double(double v);

// ((hash(z) ^ hash(y)) * 2) ^ hash(x)
std::size_t hash_xyz(double x, double y, double z);

// An ordered pair of point addresses.
inline std::size_t hash_point_pair(const void* a, const void* b) {
  const auto ua = reinterpret_cast<std::uintptr_t>(a);
  const auto ub = reinterpret_cast<std::uintptr_t>(b);
  const std::uint64_t p = ua * 0x9e3779b97f4a7c15ULL;
  return static_cast<std::size_t>(((p >> 2) + 0x9e3779b97f4a7c15ULL + (ua * 0x8dde6e5fd29f0540ULL + ub)) ^ p);
}

}  // namespace geom
