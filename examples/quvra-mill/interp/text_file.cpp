#include "interp/text_file.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "interp/source_error_t.h"

namespace mill {

std::string read_text_file(const std::string& path) {
  // A directory opens as a stream that reads nothing: it would pass for an
  // empty program.
  std::error_code ec;
  if (std::filesystem::is_directory(path, ec)) throw source_error_t(path, 0, "", "is a directory, not a file");
  std::ifstream in(path, std::ios::binary);
  if (!in) throw source_error_t(path, 0, "", "cannot open the file");
  std::ostringstream text;
  text << in.rdbuf();
  if (in.bad()) throw source_error_t(path, 0, "", "cannot read the file");
  return std::move(text).str();
}

}  // namespace mill
