#pragma once

// One NGC source line after reading, before any evaluation. A line is either
// a block (words and parameter settings) or an O-word control line; both
// keep their text for messages. Numbers inside stay unevaluated expressions,
// because a loop runs the same line with different parameters.

#include <string>
#include <vector>

#include "interp/expr_t.h"

namespace mill {

struct ngc_word_t {
  char letter = 0;  // lower case
  expr_t value;
  std::string text;  // as written, upper case, e.g. "X[#1+2]"
};

// "#target=value"; target is a param or named_param expression.
struct ngc_setting_t {
  expr_t target;
  expr_t value;
  std::string text;
};

enum class o_keyword {
  none,
  sub,
  endsub,
  call,
  return_,
  if_,
  elseif,
  else_,
  endif,
  while_,
  endwhile,
  do_,
  repeat,
  endrepeat,
  break_,
  continue_,
};

struct ngc_line_t {
  int number = 0;        // 1-based line in the file
  bool percent = false;  // a line holding only '%'
  std::vector<ngc_word_t> words;
  std::vector<ngc_setting_t> settings;

  o_keyword keyword = o_keyword::none;
  std::string label;         // "100" for O100 (by value: O0100 is O100), "<name>"
  std::vector<expr_t> args;  // the bracketed values after the keyword
  std::string o_text;        // e.g. "O100 ENDIF"

  bool is_control() const { return keyword != o_keyword::none; }
};

}  // namespace mill
