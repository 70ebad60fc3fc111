#include "host/stl_writer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <stdexcept>

namespace mill {

namespace {

static_assert(std::endian::native == std::endian::little, "STL files are little-endian");

template <typename T>
void put(std::ofstream& out, T value) {
  std::array<char, sizeof(T)> bytes;
  std::memcpy(bytes.data(), &value, sizeof(T));
  out.write(bytes.data(), bytes.size());
}

}  // namespace

void write_binary_stl(const std::string& path, const std::vector<double>& tris, const std::string& title) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (!out) throw std::runtime_error("cannot write " + path);
  std::array<char, 80> header{};
  std::copy_n(title.begin(), std::min(title.size(), header.size()), header.begin());
  out.write(header.data(), header.size());
  const std::size_t count = tris.size() / 12;
  put(out, static_cast<std::uint32_t>(count));
  for (std::size_t t = 0; t < count; ++t) {
    const double* rec = &tris[12 * t];
    for (int i = 9; i < 12; ++i) put(out, static_cast<float>(rec[i]));
    for (int i = 0; i < 9; ++i) put(out, static_cast<float>(rec[i]));
    put(out, std::uint16_t{0});
  }
  if (!out.flush()) throw std::runtime_error("cannot write " + path);
}

}  // namespace mill
