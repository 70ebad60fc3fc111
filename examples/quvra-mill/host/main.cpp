// quvra-mill: plays an NC program against a stock through libquvra's flat
// boundary, as a customer's host would.

#include <unistd.h>

#include <iostream>
#include <string>
#include <vector>

#include "host/mill_app.h"

int main(int argc, char** argv) {
  const std::vector<std::string> args(argv + 1, argv + argc);
  return mill::run_mill(args, std::cout, std::cerr, isatty(STDERR_FILENO) != 0);
}
