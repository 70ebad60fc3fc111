#pragma once

// quvra-mill from its arguments to its exit status, with the streams handed
// in so that a test can run it whole.

#include <ostream>
#include <string>
#include <vector>

namespace mill {

// Exit statuses.
enum {
  mill_ok = 0,
  mill_program_error = 1,  // the program or a file it needs is at fault
  mill_usage_error = 2,    // the command line is at fault
  mill_failed = 3,         // the run could not be done
  mill_interrupted = 130,  // stopped by Ctrl-C; what was cut is written
};

// args without the command's own name. Messages for the user go to out,
// failures to err; terminal says whether err is a terminal that can show a
// progress bar.
int run_mill(const std::vector<std::string>& args, std::ostream& out, std::ostream& err, bool terminal);

}  // namespace mill
