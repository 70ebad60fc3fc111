#include <fstream>

#include "geom/stl_readers.h"

namespace geom {

stl_form detect_stl_form(const std::string& path) {
  std::ifstream in(path);
  // An unopenable file goes to the binary reader, which reports it.
  if (!in) return stl_form::binary;
  char first_line[300];
  in.getline(first_line, sizeof first_line);
  if (in.eof()) return stl_form::binary;
  std::string word;
  // A first line of 300 characters or more has failed the stream here, and
  // the extraction fails with it.
  if (!(in >> word)) return stl_form::binary;
  return word == "facet" || word == "endsolid" ? stl_form::text : stl_form::binary;
}

stl_status read_stl_file(const std::string& path, std::vector<stl_tri_t>& out) {
  return detect_stl_form(path) == stl_form::text ? read_text_stl(path, out) : read_binary_stl(path, out);
}

}  // namespace geom
