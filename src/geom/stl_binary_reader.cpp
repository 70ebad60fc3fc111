#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <fstream>

#include "geom/stl_readers.h"

// Binary STL layout, all little endian:
//   0        80 bytes  header, ignored
//   80       4 bytes   facet count, signed 32-bit
//   84+50i   12 bytes  normal of facet i, three 32-bit floats
//   96+50i   36 bytes  vertices a, b, c, nine 32-bit floats
//   132+50i  2 bytes   attribute, ignored
// Bytes behind the last counted facet are ignored.

namespace geom {

namespace {

static_assert(std::endian::native == std::endian::little, "facets are decoded by plain copies");

constexpr std::int64_t header_size = 84;
constexpr std::int64_t facet_size = 50;
// Facets are read in blocks, so that the reader is bounded by copying rather
// than by one stream call per field.
constexpr std::int64_t facets_per_block = 1 << 14;

std::array<double, 3> widen(const float* f) { return {f[0], f[1], f[2]}; }

stl_tri_t decode_facet(const char* bytes) {
  float f[12];
  std::memcpy(f, bytes, sizeof f);
  return stl_tri_t{widen(f + 3), widen(f + 6), widen(f + 9), widen(f)};
}

}  // namespace

stl_status read_binary_stl(const std::string& path, std::vector<stl_tri_t>& out) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return stl_status::open_failed;
  in.seekg(0, std::ios::end);
  const std::int64_t size = in.tellg();
  if (size < header_size) return stl_status::malformed;

  in.seekg(80);
  std::int32_t count = 0;
  if (!in.read(reinterpret_cast<char*>(&count), sizeof count)) return stl_status::malformed;
  if (count < 0 || count > (size - header_size) / facet_size) return stl_status::malformed;
  out.reserve(out.size() + static_cast<std::size_t>(count));

  std::vector<char> block(static_cast<std::size_t>(std::min<std::int64_t>(count, facets_per_block) * facet_size));
  for (std::int64_t left = count; left > 0;) {
    const std::int64_t wanted = std::min(left, facets_per_block);
    in.read(block.data(), wanted * facet_size);
    const std::int64_t whole = in.gcount() / facet_size;
    for (std::int64_t i = 0; i < whole; ++i) out.push_back(decode_facet(block.data() + i * facet_size));
    if (whole < wanted) return stl_status::malformed;
    left -= wanted;
  }
  return stl_status::ok;
}

}  // namespace geom
