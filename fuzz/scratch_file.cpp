#include "scratch_file.h"

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <stdexcept>

namespace fuzz {

const std::string& write_scratch(const std::uint8_t* data, std::size_t size) {
  static const std::string path =
      (std::filesystem::temp_directory_path() / ("quvra-fuzz-" + std::to_string(getpid()))).string();
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (!file) throw std::runtime_error("cannot write " + path);
  if (size && std::fwrite(data, 1, size, file) != size) throw std::runtime_error("cannot write " + path);
  std::fclose(file);
  return path;
}

}  // namespace fuzz
