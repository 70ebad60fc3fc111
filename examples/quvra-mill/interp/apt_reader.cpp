#include "interp/apt_reader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>

#include "interp/apt_statement_t.h"
#include "interp/move_limits.h"
#include "interp/source_error_t.h"
#include "interp/tool_desc_parse.h"

namespace mill {

namespace {

constexpr std::array<std::string_view, 15> passive_statements{"PARTNO",    "PPRINT", "INSERT", "TPRINT", "MACHIN",
                                                              "CLPRNT",    "COOLNT", "SPINDL", "NOPOST", "PAINT",
                                                              "TOOL PATH", "MULTAX", "OPSKIP", "INTOL",  "OUTTOL"};

class apt_runner_t {
 public:
  apt_runner_t(const std::string& file, const interp_options_t& options)
      : file_(file), options_(options), position_(options.start), home_(options.start), tool_(options.tool) {
    out_.files.push_back(file);
  }

  program_t run(const std::vector<apt_statement_t>& statements);

 private:
  using handler_t = void (apt_runner_t::*)(const apt_statement_t&);

  [[noreturn]] void fail(const apt_statement_t& s, const std::string& word, const std::string& reason) const {
    throw source_error_t(file_, s.line, word, reason);
  }
  // Runs the checks of move_limits.h, stopping the run at s on the first
  // that fails.
  template <typename Checks>
  void within_limits(const apt_statement_t& s, Checks checks) const {
    try {
      checks();
    } catch (const std::invalid_argument& e) {
      fail(s, s.major, e.what());
    }
  }
  std::vector<double> numbers(const apt_statement_t& s, std::initializer_list<std::size_t> counts) const;
  vec3_t point(const std::vector<double>& v, std::size_t first, double scale) const;
  vec3_t axis(const apt_statement_t& s, const std::vector<double>& v) const;
  void move(const apt_statement_t& s, const vec3_t& to, const vec3_t& axis);

  void go_to(const apt_statement_t& s);
  void go_delta(const apt_statement_t& s);
  void from(const apt_statement_t& s);
  void go_home(const apt_statement_t& s) { move(s, home_, home_axis_); }
  void rapid(const apt_statement_t&) { rapid_next_ = true; }
  void fedrat(const apt_statement_t& s);
  void cutter(const apt_statement_t& s);
  void loadtl(const apt_statement_t& s);
  void units(const apt_statement_t& s);
  void msys(const apt_statement_t& s);
  void pass(const apt_statement_t&) {}
  handler_t handler(const std::string& major) const;

  const std::string& file_;
  const interp_options_t& options_;
  program_t out_;
  vec3_t position_;
  vec3_t axis_{0, 0, 1};
  vec3_t home_;
  vec3_t home_axis_{0, 0, 1};
  double mm_per_unit_ = 1;
  double feed_ = 0;
  bool rapid_next_ = false;
  int tool_;
};

std::vector<double> apt_runner_t::numbers(const apt_statement_t& s, std::initializer_list<std::size_t> counts) const {
  std::vector<double> v;
  for (const apt_param_t& p : s.params) {
    if (!p.is_number) fail(s, p.word, "expected a number");
    v.push_back(p.number);
  }
  if (std::find(counts.begin(), counts.end(), v.size()) == counts.end()) fail(s, s.major, "wrong number of values");
  return v;
}

vec3_t apt_runner_t::point(const std::vector<double>& v, std::size_t first, double scale) const {
  return {v[first] * scale, v[first + 1] * scale, v[first + 2] * scale};
}

vec3_t apt_runner_t::axis(const apt_statement_t& s, const std::vector<double>& v) const {
  if (v.size() < 6) return axis_;
  const vec3_t a = point(v, 3, 1.0);
  const double length = std::hypot(a[0], a[1], a[2]);
  if (length < 1e-9) fail(s, s.major, "tool axis of zero length");
  return {a[0] / length, a[1] / length, a[2] / length};
}

void apt_runner_t::move(const apt_statement_t& s, const vec3_t& to, const vec3_t& axis) {
  const move_kind kind = rapid_next_ ? move_kind::rapid : move_kind::feed;
  rapid_next_ = false;
  if (kind == move_kind::feed && feed_ <= 0) fail(s, s.major, "feed move before any FEDRAT");
  if (to == position_ && axis == axis_) return;
  within_limits(s, [&] {
    check_reach(to, options_);
    check_room(out_.moves.size(), 1, options_);
  });
  move_t m;
  m.line = static_cast<std::uint32_t>(s.line);
  m.kind = kind;
  m.start = position_;
  m.end = to;
  m.axis_start = axis_;
  m.axis_end = axis;
  m.feed = kind == move_kind::rapid ? 0 : feed_;
  m.tool = tool_;
  out_.moves.push_back(m);
  position_ = to;
  axis_ = axis;
}

void apt_runner_t::go_to(const apt_statement_t& s) {
  const std::vector<double> v = numbers(s, {3, 6});
  move(s, point(v, 0, mm_per_unit_), axis(s, v));
}

void apt_runner_t::go_delta(const apt_statement_t& s) {
  const std::vector<double> v = numbers(s, {1, 3});
  const vec3_t step =
      v.size() == 1 ? point({axis_[0], axis_[1], axis_[2]}, 0, v[0] * mm_per_unit_) : point(v, 0, mm_per_unit_);
  move(s, {position_[0] + step[0], position_[1] + step[1], position_[2] + step[2]}, axis_);
}

void apt_runner_t::from(const apt_statement_t& s) {
  const std::vector<double> v = numbers(s, {3, 6});
  const vec3_t start = point(v, 0, mm_per_unit_);
  within_limits(s, [&] { check_reach(start, options_); });
  home_ = position_ = start;
  home_axis_ = axis_ = axis(s, v);
}

void apt_runner_t::fedrat(const apt_statement_t& s) {
  double scale = mm_per_unit_;
  std::vector<double> values;
  for (const apt_param_t& p : s.params) {
    if (p.is_number) {
      values.push_back(p.number);
    } else if (p.word == "MMPM" || p.word == "IPM") {
      scale = p.word == "IPM" ? 25.4 : 1.0;
    } else {
      fail(s, p.word, "unsupported feed mode");
    }
  }
  if (values.size() != 1 || values[0] <= 0) fail(s, s.major, "expected one positive feed rate");
  feed_ = values[0] * scale;
}

void apt_runner_t::cutter(const apt_statement_t& s) {
  std::vector<double> v = numbers(s, {1, 2, 7});
  // Lengths follow the units; the angles alpha and beta do not.
  for (std::size_t i = 0; i < v.size(); ++i)
    if (i != 4 && i != 5) v[i] *= mm_per_unit_;
  tool_desc_t desc;
  try {
    desc = v.size() == 1   ? flat_tool(v[0])
           : v.size() == 2 ? bull_tool(v[0], v[1])
                           : apt_tool({v[0], v[1], v[2], v[3], v[4], v[5], v[6]});
  } catch (const std::invalid_argument& e) {
    fail(s, s.major, e.what());
  }
  // A tool that gets a different cutter becomes a new tool, numbered above
  // all so far, so the moves made before keep the cutter they were cut with.
  const auto known = out_.tools.find(tool_);
  if (known != out_.tools.end() && !(known->second == desc)) tool_ = std::max(tool_, out_.tools.rbegin()->first) + 1;
  out_.tools[tool_] = desc;
}

void apt_runner_t::loadtl(const apt_statement_t& s) {
  if (s.params.empty() || !s.params[0].is_number) fail(s, s.major, "expected a tool number");
  const double n = s.params[0].number;
  if (n < 0 || n != std::floor(n) || n > 1e6) fail(s, s.params[0].word, "bad tool number");
  tool_ = static_cast<int>(n);
}

void apt_runner_t::units(const apt_statement_t& s) {
  const std::string word = s.params.empty() ? std::string() : s.params[0].word;
  if (word == "MM") {
    mm_per_unit_ = 1.0;
  } else if (word == "INCHES" || word == "INCH") {
    mm_per_unit_ = 25.4;
  } else {
    fail(s, word.empty() ? s.major : word, "unsupported units");
  }
}

void apt_runner_t::msys(const apt_statement_t& s) {
  // A machine coordinate system moves the whole path; only the identity,
  // which CAM systems write by default, leaves it where it is.
  const std::vector<double> v = numbers(s, {9});
  constexpr std::array<double, 9> identity{0, 0, 0, 1, 0, 0, 0, 1, 0};
  for (std::size_t i = 0; i < v.size(); ++i)
    if (std::abs(v[i] - identity[i]) > 1e-9) fail(s, s.major, "unsupported coordinate system");
}

apt_runner_t::handler_t apt_runner_t::handler(const std::string& major) const {
  static const std::array<std::pair<std::string_view, handler_t>, 10> handlers{{
      {"GOTO", &apt_runner_t::go_to},
      {"GODLTA", &apt_runner_t::go_delta},
      {"FROM", &apt_runner_t::from},
      {"GOHOME", &apt_runner_t::go_home},
      {"RAPID", &apt_runner_t::rapid},
      {"FEDRAT", &apt_runner_t::fedrat},
      {"CUTTER", &apt_runner_t::cutter},
      {"LOADTL", &apt_runner_t::loadtl},
      {"UNITS", &apt_runner_t::units},
      {"MSYS", &apt_runner_t::msys},
  }};
  for (const auto& [name, h] : handlers)
    if (name == major) return h;
  if (std::find(passive_statements.begin(), passive_statements.end(), major) != passive_statements.end())
    return &apt_runner_t::pass;
  return nullptr;
}

program_t apt_runner_t::run(const std::vector<apt_statement_t>& statements) {
  for (const apt_statement_t& s : statements) {
    if (s.major == "END" || s.major == "FINI") break;
    const handler_t h = handler(s.major);
    if (!h) fail(s, s.major, "unsupported statement");
    (this->*h)(s);
  }
  return std::move(out_);
}

}  // namespace

program_t run_apt(std::string_view text, const std::string& file, const interp_options_t& options) {
  return apt_runner_t(file, options).run(read_apt_statements(text));
}

}  // namespace mill
