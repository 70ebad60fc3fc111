#include "interp/program_reader.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>

#include "interp/apt_reader.h"
#include "interp/ngc_interpreter.h"
#include "interp/text_file.h"

namespace mill {

namespace {

constexpr std::array<std::string_view, 5> apt_extensions{".cl", ".cls", ".clt", ".apt",
                                                         ".aptsource"};
constexpr std::array<std::string_view, 5> ngc_extensions{".ngc", ".nc", ".tap", ".gcode", ".cnc"};

template <std::size_t N>
bool listed(const std::array<std::string_view, N>& list, const std::string& ext) {
  return std::find(list.begin(), list.end(), ext) != list.end();
}

bool starts_like_apt(std::string_view text) {
  while (!text.empty()) {
    const auto eol = text.find('\n');
    const std::string_view line = text.substr(0, eol);
    text.remove_prefix(eol == std::string_view::npos ? text.size() : eol + 1);
    const auto first = line.find_first_not_of(" \t\r");
    if (first == std::string_view::npos || line.substr(first).starts_with("$$")) continue;
    std::size_t i = first;
    while (i < line.size() && (std::isalpha(static_cast<unsigned char>(line[i])) || line[i] == ' '))
      ++i;
    return i > first && i < line.size() && line[i] == '/';
  }
  return false;
}

}  // namespace

program_format detect_format(const std::string& path, std::string_view text) {
  std::string ext = std::filesystem::path(path).extension().string();
  std::transform(ext.begin(), ext.end(), ext.begin(),
                 [](unsigned char ch) { return static_cast<char>(std::tolower(ch)); });
  if (listed(apt_extensions, ext)) return program_format::apt;
  if (listed(ngc_extensions, ext)) return program_format::ngc;
  return starts_like_apt(text) ? program_format::apt : program_format::ngc;
}

program_t read_program(const std::string& path, const interp_options_t& options) {
  const std::string text = read_text_file(path);
  if (detect_format(path, text) == program_format::apt) return run_apt(text, path, options);
  return run_ngc(text, path, options);
}

}  // namespace mill
