#pragma once

// The command line of quvra-mill:
//   quvra-mill [PROGRAM] [--stock box:X0,Y0,Z0,X1,Y1,Z1 | --stock FILE.stl]
//              [--cell W] [--tool DESC] [--tool-length L] [--tool-table FILE]
//              [--open-stock] [--out DIR] [--help]
// An option's value follows it as the next argument or after '='.

#include <string>
#include <string_view>
#include <vector>

#include "host/mill_options_t.h"

namespace mill {

// Throws std::invalid_argument whose message names the option and what is
// wrong with it, ready to print after "quvra-mill: ".
mill_options_t parse_mill_args(const std::vector<std::string>& args);

// "box:X0,Y0,Z0,X1,Y1,Z1" or the path of an STL file. Throws
// std::invalid_argument for a box without six numbers or with a side that
// is not longer than zero.
stock_spec_t parse_stock_spec(std::string_view text);

std::string usage_text();

}  // namespace mill
