#include <algorithm>
#include <cstdint>
#include <fstream>
#include <locale>

#include "geom/stl_readers.h"

// A facet of a text STL is seven lines:
//   facet normal nx ny nz / outer loop / vertex x y z (three times) /
//   endloop / endfacet
// Keywords are skipped by position, whatever their text; only "endsolid" in
// the place of a facet's first word is compared, and ends the reading.

namespace geom {

namespace {

std::int64_t count_line_ends(std::ifstream& in) {
  std::int64_t lines = 0;
  char buf[1 << 16];
  while (in.read(buf, sizeof buf) || in.gcount() > 0) lines += std::count(buf, buf + in.gcount(), '\n');
  in.clear();
  in.seekg(0);
  return lines;
}

void read_point(std::ifstream& in, std::string& word, std::array<double, 3>& point) {
  float x = 0, y = 0, z = 0;
  in >> word >> x >> y >> z;
  point = {x, y, z};
}

}  // namespace

stl_status read_text_stl(const std::string& path, std::vector<stl_tri_t>& out) {
  std::ifstream in(path);
  if (!in) return stl_status::open_failed;
  in.imbue(std::locale::classic());

  // Seven lines a facet, two for the frame: a capacity hint, never a limit.
  const std::int64_t lines = count_line_ends(in);
  out.reserve(out.size() + static_cast<std::size_t>((lines - 2) / 7 + 1));

  char first_line[512];
  in.getline(first_line, sizeof first_line);
  if (in.eof()) return stl_status::ok;

  std::string word;
  while (!in.eof()) {
    word.clear();
    in >> word;
    if (word == "endsolid") break;
    stl_tri_t tri{};
    read_point(in, word, tri.normal);  // "facet" then "normal nx ny nz"
    in >> word >> word;                // "outer loop"
    read_point(in, word, tri.a);
    read_point(in, word, tri.b);
    read_point(in, word, tri.c);
    in >> word >> word;  // "endloop endfacet"
    if (in.fail()) return stl_status::malformed;
    out.push_back(tri);
  }
  return stl_status::ok;
}

}  // namespace geom
