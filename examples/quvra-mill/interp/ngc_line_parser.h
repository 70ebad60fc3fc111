#pragma once

// Reading one NGC source line: comments "( )" and ";" go, blanks go (the
// language ignores them, even inside numbers and names), letters fold to
// lower case, a leading block-delete '/' and line number N are dropped (the
// block-delete switch is off), and what remains becomes words, parameter
// settings or one O-word control line.

#include <string>
#include <string_view>

#include "interp/ngc_line_t.h"

namespace mill {

// Throws source_error_t with file, number and the word that cannot be read.
ngc_line_t parse_ngc_line(std::string_view raw, const std::string& file, int number);

}  // namespace mill
