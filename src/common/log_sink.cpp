#include "common/log_sink.h"

#include <atomic>
#include <cstdio>
#include <fstream>
#include <mutex>
#include <string>

namespace common {

namespace {

std::atomic<log_func> log_func_slot{nullptr};

// The file opens on first use, truncating what an earlier process wrote. A
// failed open (a read-only working directory) drops the text silently and is
// retried on the next line.
class log_file_t {
 public:
  void write(std::string_view msg) {
    std::lock_guard lock(_mutex);
    if (!_stream.is_open()) {
      _stream.clear();
      _stream.open("log-cpp.txt", std::ios::out | std::ios::trunc);
    }
    if (!_stream.is_open()) return;
    _stream << msg << '\n';
    _stream.flush();
  }

 private:
  std::mutex _mutex;
  std::ofstream _stream;
};

log_file_t& log_file() {
  static log_file_t* file = new log_file_t;  // never destroyed: logging may run at exit
  return *file;
}

void write_console(std::string_view msg) {
  std::fwrite(msg.data(), 1, msg.size(), stdout);
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

}  // namespace

void log_line(std::string_view msg, unsigned sinks) noexcept {
  if (sinks & log_sink_console) write_console(msg);
  if (sinks & log_sink_file) log_file().write(msg);
  if (sinks & log_sink_callback) {
    const log_func fn = log_func_slot.load(std::memory_order_acquire);
    if (fn) fn(std::string(msg).c_str());
  }
}

void set_log_callback(log_func fn) noexcept { log_func_slot.store(fn, std::memory_order_release); }

}  // namespace common
