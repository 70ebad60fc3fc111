#pragma once

// Running an RS274/NGC program: the text is read line by line, the O-word
// structure is worked out, and then control lines and blocks execute in
// program order until M2, M30, a second '%' line or the end of the text.

#include <string>
#include <string_view>

#include "interp/interp_options_t.h"
#include "interp/program_t.h"

namespace mill {

// file names the program in messages and in program_t::files. Throws
// source_error_t on the first construct that cannot run, and
// std::invalid_argument for options that cannot be used.
program_t run_ngc(std::string_view text, const std::string& file, const interp_options_t& options);

}  // namespace mill
