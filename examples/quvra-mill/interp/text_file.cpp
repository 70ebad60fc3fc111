#include "interp/text_file.h"

#include <fstream>
#include <sstream>

#include "interp/source_error_t.h"

namespace mill {

std::string read_text_file(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw source_error_t(path, 0, "", "cannot open the file");
  std::ostringstream text;
  text << in.rdbuf();
  if (in.bad()) throw source_error_t(path, 0, "", "cannot read the file");
  return std::move(text).str();
}

}  // namespace mill
