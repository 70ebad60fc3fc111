#pragma once

#include <string>

namespace mill {

// The whole file as text. Throws source_error_t naming the path when the
// file cannot be read: a missing program is a user's mistake, not a crash.
std::string read_text_file(const std::string& path);

}  // namespace mill
