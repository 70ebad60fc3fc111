#include "interp/program_reader.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "interp/apt_reader.h"
#include "interp/ngc_interpreter.h"
#include "interp/text_file.h"
#include "interp/text_util.h"

namespace mill {

namespace {

constexpr std::array<std::string_view, 5> apt_extensions{".cl", ".cls", ".clt", ".apt", ".aptsource"};
constexpr std::array<std::string_view, 5> ngc_extensions{".ngc", ".nc", ".tap", ".gcode", ".cnc"};

template <std::size_t N>
bool listed(const std::array<std::string_view, N>& list, const std::string& ext) {
  return std::find(list.begin(), list.end(), ext) != list.end();
}

bool starts_like_apt(std::string_view text) {
  for (std::string_view line : split_lines(text)) {
    line = trim(line);
    if (line.empty() || line.starts_with("$$")) continue;
    const auto word_end = line.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz ");
    return word_end != 0 && word_end != std::string_view::npos && line[word_end] == '/';
  }
  return false;
}

}  // namespace

program_format detect_format(const std::string& path, std::string_view text) {
  const std::string ext = lower(std::filesystem::path(path).extension().string());
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
