#include "common/check.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace common {

namespace {

// Index of the '(' that opens the parameter list, skipping template
// arguments, or npos.
size_t parameter_list_start(std::string_view s) {
  int depth = 0;
  for (size_t i = 0; i < s.size(); ++i) {
    const char c = s[i];
    if (c == '<') ++depth;
    if (c == '>') --depth;
    if (c == '(' && depth == 0) {
      const bool call_operator = s.substr(0, i).ends_with("operator");
      return call_operator ? i + 2 : i;
    }
  }
  return std::string_view::npos;
}

// Index just behind the last blank at template depth 0 before end: where
// the return type ends.
size_t name_start(std::string_view s, size_t end) {
  int depth = 0;
  for (size_t i = end; i-- > 0;) {
    const char c = s[i];
    if (c == '>') ++depth;
    if (c == '<') --depth;
    if (c == ' ' && depth == 0) return i + 1;
  }
  return 0;
}

}  // namespace

void print_failure_report(std::string_view msg, std::string_view func, std::string_view file, int line) noexcept {
  // One write, so that reports of two threads do not interleave line by line.
  const std::string text = failure_report(msg, func, file, line) + "\n";
  std::fwrite(text.data(), 1, text.size(), stderr);
  std::fflush(stderr);
}

void abort_with_report(std::string_view msg, std::string_view func, std::string_view file, int line) noexcept {
  print_failure_report(msg, func, file, line);
  std::abort();
}

std::string qualified_function_name(std::string_view pretty_function) {
  const size_t end = parameter_list_start(pretty_function);
  if (end == std::string_view::npos) return std::string(pretty_function);
  const size_t begin = name_start(pretty_function, end);
  return std::string(pretty_function.substr(begin, end - begin));
}

std::string source_path(std::string_view file) {
  const size_t slash = file.rfind('/');
  const size_t dot = file.rfind('.');
  if (dot != std::string_view::npos && (slash == std::string_view::npos || dot > slash)) file = file.substr(0, dot);
  return std::string(file);
}

std::string failure_report(std::string_view msg, std::string_view func, std::string_view file, int line) {
  std::string out = "Program abort: ";
  out.append(msg).append("\nAt ").append(func);
  out.append("\nDetail: at line ").append(std::to_string(line));
  out.append(" , in file ").append(file);
  return out;
}

void abort_at(const std::string& msg, const char* pretty_function, const char* file, int line) noexcept {
  const std::string func = qualified_function_name(pretty_function);
  const std::string path = source_path(file);
  abort_with_report(msg, func, path, line);
}

void warn_at(const std::string& msg, const char* pretty_function, const char* file, int line) noexcept {
  const std::string func = qualified_function_name(pretty_function);
  const std::string path = source_path(file);
  print_failure_report(msg, func, path, line);
}

void check_last_error(const char* msg, const char* func, const char* file, const int* line) noexcept {
  const int code = errno;
  if (code == 0) return;
  const std::string text = std::string(msg) + " err:" + std::to_string(code);
  abort_with_report(text, func ? func : "", file ? file : "", line ? *line : 0);
}

}  // namespace common
