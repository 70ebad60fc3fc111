#pragma once

// The host's one entry point: a program file in, its moves out, whichever
// language it is written in.

#include <string>
#include <string_view>

#include "interp/interp_options_t.h"
#include "interp/program_t.h"

namespace mill {

enum class program_format {
  ngc,
  apt,
};

// By extension (.cl .cls .clt .apt .aptsource are APT CL data; .ngc .nc
// .tap .gcode .cnc are G-code); for any other name, by the first statement:
// an APT statement starts with a word and a '/', a G-code line never does.
program_format detect_format(const std::string& path, std::string_view text);

// Throws source_error_t: for an unreadable file with line 0, otherwise with
// the line and word that stopped the run.
program_t read_program(const std::string& path, const interp_options_t& options);

}  // namespace mill
