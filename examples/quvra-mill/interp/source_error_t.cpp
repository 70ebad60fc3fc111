#include "interp/source_error_t.h"

#include <utility>

namespace mill {

namespace {

std::string compose(const std::string& file, int line, const std::string& word, const std::string& reason) {
  std::string text = file + ':' + std::to_string(line) + ": " + reason;
  if (!word.empty()) text += " '" + word + "'";
  return text;
}

}  // namespace

source_error_t::source_error_t(std::string file, int line, std::string word, const std::string& reason)
    : std::runtime_error(compose(file, line, word, reason)),
      file_(std::move(file)),
      line_(line),
      word_(std::move(word)) {}

}  // namespace mill
