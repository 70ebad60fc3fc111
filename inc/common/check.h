#pragma once

// Invariant checks for internal code. A failed check ends the process through
// _abort_msg with the message, the qualified function name and the source
// path relative to the project root (without its extension). The report is
// built only on the failing path, so a passing check costs one comparison.

#include <string>
#include <string_view>

namespace common {

// "void geom::stl3d_t::stl3d_t(const string&)" -> "geom::stl3d_t::stl3d_t".
std::string qualified_function_name(std::string_view pretty_function);

// "src/geom/stl3d_t.cpp" -> "src/geom/stl3d_t".
std::string source_path(std::string_view file);

// The text of a failure report, without the final line end.
std::string failure_report(std::string_view msg, std::string_view func, std::string_view file, int line);

// Prints the report to the standard error stream in one write.
void print_failure_report(std::string_view msg, std::string_view func, std::string_view file, int line) noexcept;
[[noreturn]] void abort_with_report(std::string_view msg, std::string_view func, std::string_view file,
                                    int line) noexcept;

// The check macros land here: they name the caller from the compiler's
// function and file macros.
[[noreturn]] void abort_at(const std::string& msg, const char* pretty_function, const char* file, int line) noexcept;
void warn_at(const std::string& msg, const char* pretty_function, const char* file, int line) noexcept;

// Aborts with msg + " err:" + errno when errno is non-zero.
void check_last_error(const char* msg, const char* func, const char* file, const int* line) noexcept;

}  // namespace common

#define QV_CHECK(cond, msg)                                               \
  do {                                                                    \
    if (!(cond)) [[unlikely]]                                             \
      ::common::abort_at((msg), __PRETTY_FUNCTION__, __FILE__, __LINE__); \
  } while (0)

#define QV_ABORT(msg) ::common::abort_at((msg), __PRETTY_FUNCTION__, __FILE__, __LINE__)

#define QV_WARN(msg) ::common::warn_at((msg), __PRETTY_FUNCTION__, __FILE__, __LINE__)
