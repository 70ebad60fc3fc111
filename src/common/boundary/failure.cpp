#include "common/failure.h"

#include "common/check.h"

// Reports from hosts and from other languages' bindings are printed verbatim.
extern "C" {

void _abort_msg(const char* msg, const char* func, const char* file, const int* line) noexcept {
  common::abort_with_report(msg ? msg : "", func ? func : "", file ? file : "", line ? *line : 0);
}

void _warning_msg(const char* msg, const char* func, const char* file, const int* line) noexcept {
  common::print_failure_report(msg ? msg : "", func ? func : "", file ? file : "", line ? *line : 0);
}
}
