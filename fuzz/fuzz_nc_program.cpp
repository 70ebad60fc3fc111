// Any bytes as an NC program, run once as G-code and once as APT CL data
// under the host's limits, with the step and move limits made small so that
// one input stays quick. Refusing a program (source_error_t) is a correct
// answer; a crash, a hang, undefined behaviour, any other exception, or a
// move beyond the limits is a finding.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "interp/apt_reader.h"
#include "interp/ngc_interpreter.h"
#include "interp/source_error_t.h"

namespace {

bool within(const mill::vec3_t& p, double limit) {
  return std::abs(p[0]) <= limit && std::abs(p[1]) <= limit && std::abs(p[2]) <= limit;
}

void check(const mill::program_t& program, const mill::interp_options_t& options) {
  if (program.moves.size() > options.max_moves) std::abort();
  for (const mill::move_t& m : program.moves)
    if (!within(m.start, options.max_coordinate) || !within(m.end, options.max_coordinate)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  mill::interp_options_t options;
  options.max_steps = 10'000;
  options.max_moves = 10'000;
  try {
    check(mill::run_ngc(text, "fuzz.ngc", options), options);
  } catch (const mill::source_error_t&) {
  }
  try {
    check(mill::run_apt(text, "fuzz.cls", options), options);
  } catch (const mill::source_error_t&) {
  }
  return 0;
}
