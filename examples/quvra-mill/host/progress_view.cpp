#include "host/progress_view.h"

#include <string>

namespace mill {

namespace {

constexpr int bar_width = 40;
// A terminal redrawn more often than this only flickers.
constexpr auto redraw_period = std::chrono::milliseconds(100);

}  // namespace

progress_view_t::progress_view_t(std::ostream& out, bool terminal, std::size_t total)
    : out_(out), terminal_(terminal), total_(total), start_(std::chrono::steady_clock::now()) {}

void progress_view_t::update(std::size_t done) {
  if (terminal_) {
    const auto now = std::chrono::steady_clock::now();
    if (done < total_ && now - last_draw_ < redraw_period) return;
    last_draw_ = now;
    draw_bar(done);
    return;
  }
  const int tenth = total_ == 0 ? 10 : static_cast<int>(done * 10 / total_);
  if (tenth <= last_tenth_) return;
  last_tenth_ = tenth;
  out_ << "cut " << done << " of " << total_ << " moves (" << tenth * 10 << "%)\n" << std::flush;
}

void progress_view_t::draw_bar(std::size_t done) {
  const double fraction = total_ == 0 ? 1.0 : static_cast<double>(done) / static_cast<double>(total_);
  const int filled = static_cast<int>(fraction * bar_width);
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  out_ << "\r[" << std::string(filled, '#') << std::string(bar_width - filled, '.') << "] "
       << static_cast<int>(fraction * 100) << "% " << done << '/' << total_ << " moves";
  if (seconds > 0) out_ << ", " << static_cast<long>(static_cast<double>(done) / seconds) << " moves/s";
  out_ << "   " << std::flush;
}

void progress_view_t::finish() {
  if (terminal_) out_ << '\n' << std::flush;
}

}  // namespace mill
