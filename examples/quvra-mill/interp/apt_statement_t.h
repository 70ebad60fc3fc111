#pragma once

// APT CL data read into statements. A statement is a major word, and after
// a '/' a comma-separated list of numbers and minor words:
//   GOTO / 10.0, 20.0, 5.0, 0.0, 0.0, 1.0
//   FEDRAT / 250.0, MMPM
// A '$' ending a line continues the statement on the next one; "$$" starts
// a comment. Text statements (PARTNO, PPRINT, INSERT, TPRINT) keep no
// parameters, since their text is free and may hold commas and slashes.

#include <string>
#include <string_view>
#include <vector>

namespace mill {

struct apt_param_t {
  bool is_number = false;
  double number = 0;
  std::string word;  // upper case; the text as written for numbers
};

struct apt_statement_t {
  int line = 0;       // 1-based line where the statement starts
  std::string major;  // upper case, inner blanks kept: "TOOL PATH"
  std::vector<apt_param_t> params;
};

// Never fails: a statement's meaning is judged by whoever runs it.
std::vector<apt_statement_t> read_apt_statements(std::string_view text);

}  // namespace mill
