#pragma once

// Output files that are whole or absent: each is written under a temporary
// name beside its own and renamed once complete, so that neither a failure
// nor Ctrl-C leaves a cut-off file under the name a user opens.

#include <filesystem>
#include <functional>
#include <string>

namespace mill {

// write fills the temporary file whose name it is given; path then takes
// its place. A write that throws removes the temporary file, leaves path as
// it was and passes the exception on; so does a second Ctrl-C
// (interrupt_flag.h) during it, which ends the process. Throws
// std::runtime_error when the rename fails.
void write_whole_file(const std::filesystem::path& path, const std::function<void(const std::string&)>& write);

// Creates dir if need be and makes sure files can be made in it, so that a
// run finds an unusable output folder before it cuts, not after. Throws
// std::runtime_error naming dir.
void require_writable_dir(const std::filesystem::path& dir);

}  // namespace mill
