#include "geom/weld_hash.h"

#include <cstring>

namespace geom {

std::size_t hash_double(double v) {
  constexpr std::uint64_t offset_basis = 0xcbf29ce484222325ULL;
  constexpr std::uint64_t prime = 0x100000001b3ULL;
  if (v == 0.0) return static_cast<std::size_t>(offset_basis);  // +0 and -0 weld
  unsigned char bytes[sizeof v];
  std::memcpy(bytes, &v, sizeof v);
  std::uint64_t h = offset_basis;
  for (unsigned char b : bytes) {
    h ^= b;
    h *= prime;
  }
  return static_cast<std::size_t>(h);
}

std::size_t hash_xyz(double x, double y, double z) { return ((hash_double(z) ^ hash_double(y)) * 2) ^ hash_double(x); }

}  // namespace geom
