#include "host/whole_file.h"

#include <fstream>
#include <stdexcept>
#include <system_error>

#include "host/interrupt_flag.h"

namespace mill {

namespace fs = std::filesystem;

void write_whole_file(const fs::path& path, const std::function<void(const std::string&)>& write) {
  const std::string temp = path.string() + ".part";
  const doomed_file_guard_t doomed(temp.c_str());
  try {
    write(temp);
  } catch (...) {
    std::error_code ignored;
    fs::remove(temp, ignored);
    throw;
  }
  std::error_code ec;
  // Renamed while still doomed: a Ctrl-C after the rename finds nothing
  // left to remove, one before it removes the whole file, never half.
  fs::rename(temp, path, ec);
  if (ec) {
    fs::remove(temp, ec);
    throw std::runtime_error("cannot write " + path.string());
  }
}

void require_writable_dir(const fs::path& dir) {
  std::error_code ec;
  fs::create_directories(dir, ec);
  if (ec) throw std::runtime_error("cannot create the output folder " + dir.string() + ": " + ec.message());
  const fs::path probe = dir / ".quvra-mill-probe";
  const bool writable = static_cast<bool>(std::ofstream(probe));
  fs::remove(probe, ec);
  if (!writable) throw std::runtime_error("cannot write in the output folder " + dir.string());
}

}  // namespace mill
