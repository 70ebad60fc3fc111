#include "host/run_report.h"

#include <algorithm>
#include <sstream>

namespace mill {

namespace {

const char* kind_name(move_kind k) {
  switch (k) {
    case move_kind::rapid:
      return "rapid";
    case move_kind::feed:
      return "feed";
    case move_kind::arc_segment:
      return "arc";
  }
  return "?";
}

// A field with a comma or a quote is quoted, its quotes doubled (RFC 4180).
std::string csv_field(const std::string& text) {
  if (text.find_first_of(",\"\n") == std::string::npos) return text;
  std::string out = "\"";
  for (char c : text) out += c == '"' ? std::string("\"\"") : std::string(1, c);
  return out + '"';
}

}  // namespace

void write_moves_csv(std::ostream& out, const std::vector<move_record_t>& records,
                     const std::vector<std::string>& files) {
  out << "file,line,kind,length_mm,contact_area_mm2,touched\n";
  for (const move_record_t& r : records) {
    out << csv_field(r.file < files.size() ? files[r.file] : std::string()) << ',' << r.line << ',' << kind_name(r.kind)
        << ',' << r.length << ',' << r.outcome.contact_area << ',' << (r.outcome.touched ? 1 : 0) << '\n';
  }
}

run_summary_t summarize(const loop_result_t& loop, std::size_t moves_total, double removed_volume, double cell) {
  run_summary_t s;
  s.moves_total = moves_total;
  s.moves_cut = loop.records.size();
  s.moves_touching = static_cast<std::size_t>(std::count_if(loop.records.begin(), loop.records.end(),
                                                            [](const move_record_t& r) { return r.outcome.touched; }));
  s.interrupted = loop.interrupted;
  s.removed_volume = removed_volume;
  s.seconds = loop.seconds;
  s.cell = cell;
  return s;
}

std::string summary_text(const run_summary_t& s) {
  std::ostringstream t;
  t << "moves: " << s.moves_cut << " of " << s.moves_total << (s.interrupted ? " (stopped by Ctrl-C)" : "") << '\n'
    << "moves touching the stock: " << s.moves_touching << '\n'
    << "removed volume: " << s.removed_volume << " mm^3\n"
    << "cell width: " << s.cell << " mm\n"
    << "time: " << s.seconds << " s\n"
    << "moves per second: " << (s.seconds > 0 ? static_cast<double>(s.moves_cut) / s.seconds : 0.0) << '\n';
  return t.str();
}

}  // namespace mill
