#include "stl_files.h"

#include <cstring>
#include <fstream>
#include <sstream>

namespace quvra_test {

namespace {

void append_floats(std::string& out, const std::array<double, 3>& v) {
  for (double d : v) {
    const float f = static_cast<float>(d);
    char bytes[4];
    std::memcpy(bytes, &f, 4);
    out.append(bytes, 4);
  }
}

void text_point(std::ostringstream& out, const char* keyword, const std::array<double, 3>& v) {
  out << keyword << ' ' << v[0] << ' ' << v[1] << ' ' << v[2] << '\n';
}

}  // namespace

std::string binary_stl_bytes(const std::vector<geom::stl_tri_t>& tris, const std::string& header, std::int64_t count) {
  std::string out = header.substr(0, 80);
  out.resize(80, ' ');
  const auto count32 = static_cast<std::int32_t>(count);
  char bytes[4];
  std::memcpy(bytes, &count32, 4);
  out.append(bytes, 4);
  for (const geom::stl_tri_t& t : tris) {
    append_floats(out, t.normal);
    append_floats(out, t.a);
    append_floats(out, t.b);
    append_floats(out, t.c);
    out.append(2, '\0');
  }
  return out;
}

void write_binary_stl(const std::string& path, const std::vector<geom::stl_tri_t>& tris, const std::string& header) {
  write_file(path, binary_stl_bytes(tris, header, static_cast<std::int64_t>(tris.size())));
}

std::string text_stl(const std::vector<geom::stl_tri_t>& tris) {
  std::ostringstream out;
  out.precision(9);
  out << "solid test\n";
  for (const geom::stl_tri_t& t : tris) {
    text_point(out, "facet normal", t.normal);
    out << "outer loop\n";
    text_point(out, "vertex", t.a);
    text_point(out, "vertex", t.b);
    text_point(out, "vertex", t.c);
    out << "endloop\nendfacet\n";
  }
  out << "endsolid test\n";
  return out.str();
}

void write_text_stl(const std::string& path, const std::vector<geom::stl_tri_t>& tris) {
  write_file(path, text_stl(tris));
}

void write_file(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary | std::ios::trunc)
      .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace quvra_test
