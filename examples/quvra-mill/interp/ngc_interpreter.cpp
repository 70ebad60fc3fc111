#include "interp/ngc_interpreter.h"

#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <stdexcept>
#include <vector>

#include "interp/expr_eval.h"
#include "interp/ngc_flow_t.h"
#include "interp/ngc_line_parser.h"
#include "interp/ngc_machine_t.h"
#include "interp/source_error_t.h"
#include "interp/text_util.h"

namespace mill {

namespace {

// Deep enough for any sensible recursion, shallow enough to stop a runaway
// one before it exhausts memory.
constexpr std::size_t max_call_depth = 1000;

// More passes than the step limit allows anyway, and within a long.
constexpr long max_repeat = 1'000'000'000;

std::vector<ngc_line_t> read_lines(std::string_view text, const std::string& file) {
  std::vector<ngc_line_t> lines;
  int number = 0;
  for (const std::string_view line : split_lines(text)) lines.push_back(parse_ngc_line(line, file, ++number));
  return lines;
}

class ngc_runner_t {
 public:
  ngc_runner_t(std::string_view text, const std::string& file, const interp_options_t& options)
      : file_(file),
        options_(options),
        lines_(read_lines(text, file)),
        flow_(build_flow(lines_, file)),
        machine_(options, params_, out_) {
    out_.files.push_back(file);
  }

  program_t run();

 private:
  struct repeat_t {
    int head;  // the repeat line
    long remaining;
  };
  struct call_t {
    int return_to;
    std::vector<repeat_t> repeats;
  };

  const ngc_line_t& line(int i) const { return lines_[static_cast<std::size_t>(i)]; }
  const ngc_link_t& link(int i) const { return flow_.links[static_cast<std::size_t>(i)]; }
  std::vector<repeat_t>& repeats() { return calls_.back().repeats; }

  [[noreturn]] void fail(int i, const std::string& reason) const {
    throw source_error_t(file_, line(i).number, line(i).o_text, reason);
  }
  double value(int i, std::size_t arg) const;

  int control(int i);
  int select_branch(int i) const;
  int start_repeat(int i);
  int leave_loop(int i);
  int call_sub(int i);
  int leave_sub(int i);

  const std::string& file_;
  const interp_options_t& options_;
  std::vector<ngc_line_t> lines_;
  ngc_flow_t flow_;
  param_store_t params_;
  program_t out_;
  ngc_machine_t machine_;
  std::vector<call_t> calls_{call_t{-1, {}}};  // the main program's frame first
};

double ngc_runner_t::value(int i, std::size_t arg) const {
  try {
    return evaluate(line(i).args.at(arg), params_);
  } catch (const std::invalid_argument& e) {
    fail(i, e.what());
  }
}

program_t ngc_runner_t::run() {
  bool seen_percent = false;
  std::uint64_t steps = 0;
  for (int i = 0; i < static_cast<int>(lines_.size());) {
    const ngc_line_t& l = line(i);
    if (++steps > options_.max_steps)
      throw source_error_t(file_, l.number, "", "too many steps; the program may loop forever");
    if (l.percent) {
      if (seen_percent) break;
      seen_percent = true;
      ++i;
    } else if (l.is_control()) {
      i = control(i);
    } else if (l.words.empty() && l.settings.empty()) {
      ++i;
    } else {
      ngc_block_t block = evaluate_block(l, params_, file_);
      if (!machine_.execute(block, 0, l.number)) break;
      ++i;
    }
  }
  return std::move(out_);
}

int ngc_runner_t::control(int i) {
  const ngc_link_t& k = link(i);
  switch (line(i).keyword) {
    case o_keyword::sub:
      return k.end + 1;  // a definition runs only when called
    case o_keyword::call:
      return call_sub(i);
    case o_keyword::endsub:
    case o_keyword::return_:
      return leave_sub(i);
    case o_keyword::if_:
      return select_branch(i);
    case o_keyword::elseif:
    case o_keyword::else_:
      return k.end + 1;  // reached from the end of a branch that ran
    case o_keyword::while_:
      if (k.closes_do) return value(i, 0) != 0 ? k.head + 1 : i + 1;
      return value(i, 0) != 0 ? i + 1 : k.end + 1;
    case o_keyword::endwhile:
      return k.head;
    case o_keyword::repeat:
      return start_repeat(i);
    case o_keyword::endrepeat:
      if (--repeats().back().remaining > 0) return k.head + 1;
      repeats().pop_back();
      return i + 1;
    case o_keyword::break_:
      return leave_loop(k.head);
    case o_keyword::continue_:
      // A while tests again at its head; do and repeat at their closer.
      return line(k.head).keyword == o_keyword::while_ ? k.head : link(k.head).end;
    case o_keyword::endif:
    case o_keyword::do_:
    case o_keyword::none:
      break;
  }
  return i + 1;
}

int ngc_runner_t::select_branch(int i) const {
  for (int b = i;; b = link(b).next) {
    const o_keyword kw = line(b).keyword;
    if (kw == o_keyword::endif || kw == o_keyword::else_ || value(b, 0) != 0) return b + 1;
  }
}

int ngc_runner_t::start_repeat(int i) {
  const double count = value(i, 0);
  if (count != std::floor(count)) fail(i, "repeat count must be a whole number");
  if (count > static_cast<double>(max_repeat)) fail(i, "repeat count above the limit of " + std::to_string(max_repeat));
  if (count < 1) return link(i).end + 1;
  repeats().push_back({i, static_cast<long>(count)});
  return i + 1;
}

int ngc_runner_t::leave_loop(int head) {
  if (line(head).keyword == o_keyword::repeat) {
    while (repeats().back().head != head) repeats().pop_back();
    repeats().pop_back();
  }
  return link(head).end + 1;
}

int ngc_runner_t::call_sub(int i) {
  std::vector<double> args;
  for (std::size_t a = 0; a < line(i).args.size(); ++a) args.push_back(value(i, a));
  if (calls_.size() > max_call_depth) fail(i, "subroutine calls nested too deep");
  params_.enter_call(args);
  calls_.push_back({i + 1, {}});
  return flow_.subs.at(line(i).label) + 1;
}

int ngc_runner_t::leave_sub(int i) {
  // The value is computed with the callee's parameters, set for the caller.
  const std::optional<double> result = line(i).args.empty() ? std::nullopt : std::optional<double>(value(i, 0));
  params_.leave_call();
  const int return_to = calls_.back().return_to;
  calls_.pop_back();
  if (result) params_.set("_value", *result);
  return return_to;
}

}  // namespace

program_t run_ngc(std::string_view text, const std::string& file, const interp_options_t& options) {
  if (!(options.chord_tolerance > 0)) throw std::invalid_argument("chord tolerance must be positive");
  return ngc_runner_t(text, file, options).run();
}

}  // namespace mill
