#pragma once

// The one failure a run reports: where in which file, and the word that
// stopped it. what() reads "prog.ngc:12: unsupported word 'G41'", the form
// editors and compilers use, so a user can jump to the line.

#include <stdexcept>
#include <string>

namespace mill {

class source_error_t : public std::runtime_error {
 public:
  // word may be empty when no single word is to blame (an unclosed comment
  // is blamed on its opening parenthesis, a missing file on no word).
  source_error_t(std::string file, int line, std::string word, const std::string& reason);

  const std::string& file() const { return file_; }
  int line() const { return line_; }
  const std::string& word() const { return word_; }

 private:
  std::string file_;
  int line_;
  std::string word_;
};

}  // namespace mill
