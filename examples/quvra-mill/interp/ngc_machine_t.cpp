#include "interp/ngc_machine_t.h"

#include <algorithm>
#include <cmath>

#include "interp/ngc_params.h"
#include "interp/source_error_t.h"

namespace mill {

namespace {

enum class g_group {
  motion,
  non_modal,
  plane,
  units,
  cutter_comp,
  length_offset,
  work_system,
  path_control,
  distance,
  arc_distance,
  feed_mode,
  spindle_mode,
  retract,
};

struct g_code_info_t {
  int code;
  g_group group;
};

// Codes with no effect on the path (G40, G49, G94, G97, G98, G99, G61,
// G61.1) are accepted because programs set them out of habit; the modes
// they reject (cutter compensation, inverse time, canned cycles) are absent
// and stop the run.
constexpr std::array<g_code_info_t, 35> g_codes{{
    {0, g_group::motion},         {10, g_group::motion},         {20, g_group::motion},
    {30, g_group::motion},        {800, g_group::motion},        {40, g_group::non_modal},
    {100, g_group::non_modal},    {280, g_group::non_modal},     {300, g_group::non_modal},
    {530, g_group::non_modal},    {170, g_group::plane},         {180, g_group::plane},
    {190, g_group::plane},        {200, g_group::units},         {210, g_group::units},
    {400, g_group::cutter_comp},  {430, g_group::length_offset}, {490, g_group::length_offset},
    {540, g_group::work_system},  {550, g_group::work_system},   {560, g_group::work_system},
    {570, g_group::work_system},  {580, g_group::work_system},   {590, g_group::work_system},
    {610, g_group::path_control}, {611, g_group::path_control},  {640, g_group::path_control},
    {900, g_group::distance},     {910, g_group::distance},      {901, g_group::arc_distance},
    {911, g_group::arc_distance}, {940, g_group::feed_mode},     {970, g_group::spindle_mode},
    {980, g_group::retract},      {990, g_group::retract},
}};

// M0 M1 pause, M3 M4 M5 spindle and M7 M8 M9 coolant change nothing in the
// path; M2 M30 end the program and M6 changes the tool.
constexpr std::array<int, 11> m_codes{{0, 10, 20, 30, 40, 50, 60, 70, 80, 90, 300}};

const g_code_info_t* find_g(int code) {
  const auto it =
      std::find_if(g_codes.begin(), g_codes.end(), [code](const g_code_info_t& g) { return g.code == code; });
  return it == g_codes.end() ? nullptr : &*it;
}

const ngc_code_t* find_code(const std::vector<ngc_code_t>& codes, int code) {
  const auto it = std::find_if(codes.begin(), codes.end(), [code](const ngc_code_t& c) { return c.code == code; });
  return it == codes.end() ? nullptr : &*it;
}

}  // namespace

ngc_machine_t::ngc_machine_t(const interp_options_t& options, param_store_t& params, program_t& out)
    : options_(options), params_(params), out_(out) {
  state_.position = options.start;
  state_.tool = options.tool;
  state_.next_tool = options.tool;
}

void ngc_machine_t::fail(const std::string& word, const std::string& reason) const {
  throw source_error_t(out_.files.at(file_), line_, word, reason);
}

int ngc_machine_t::whole(double value, const std::string& word, int min, int max) const {
  const double r = std::round(value);
  if (std::abs(value - r) > 1e-6 || r < min || r > max)
    fail(word, "expected a whole number from " + std::to_string(min) + " to " + std::to_string(max));
  return static_cast<int>(r);
}

bool ngc_machine_t::execute(ngc_block_t& block, std::uint32_t file, int line) {
  file_ = file;
  line_ = line;
  check_codes(block);
  set_modes(block);
  set_feed_speed_tool(block);
  run_non_modal(block);
  run_motion(block, find_code(block.g, 530));
  if (const std::string* word = block.unused()) fail(*word, "word not used by any code");
  return !ends_program(block);
}

void ngc_machine_t::check_codes(const ngc_block_t& block) const {
  std::vector<g_group> seen;
  for (const ngc_code_t& g : block.g) {
    const g_code_info_t* info = find_g(g.code);
    if (!info) fail(g.text, "unsupported word");
    if (std::find(seen.begin(), seen.end(), info->group) != seen.end())
      fail(g.text, "two codes of one modal group in a block");
    seen.push_back(info->group);
  }
  for (const ngc_code_t& m : block.m)
    if (std::find(m_codes.begin(), m_codes.end(), m.code) == m_codes.end()) fail(m.text, "unsupported word");
}

void ngc_machine_t::set_motion_mode(int code) {
  switch (code) {
    case 0:
      state_.motion = motion_mode::rapid;
      break;
    case 10:
      state_.motion = motion_mode::linear;
      break;
    case 20:
      state_.motion = motion_mode::arc_cw;
      break;
    case 30:
      state_.motion = motion_mode::arc_ccw;
      break;
    default:
      state_.motion = motion_mode::none;
      break;
  }
}

void ngc_machine_t::set_modes(ngc_block_t& block) {
  for (const ngc_code_t& g : block.g) {
    switch (g.code) {
      case 0:
      case 10:
      case 20:
      case 30:
      case 800:
        set_motion_mode(g.code);
        break;
      case 170:
        state_.plane = plane_t::xy;
        break;
      case 180:
        state_.plane = plane_t::zx;
        break;
      case 190:
        state_.plane = plane_t::yz;
        break;
      case 200:
        state_.mm_per_unit = 25.4;
        break;
      case 210:
        state_.mm_per_unit = 1.0;
        break;
      case 900:
        state_.absolute = true;
        break;
      case 910:
        state_.absolute = false;
        break;
      case 901:
        state_.arc_absolute = true;
        break;
      case 911:
        state_.arc_absolute = false;
        break;
      case 540:
      case 550:
      case 560:
      case 570:
      case 580:
      case 590:
        state_.work_system = (g.code - 540) / 10 + 1;
        break;
      case 640:  // blending tolerances: the path handed on is the programmed one
        block.take('p');
        block.take('q');
        break;
      case 430:  // the path is of the tool tip, which length offsets keep fixed
        block.take('h');
        break;
      default:
        break;
    }
  }
}

void ngc_machine_t::set_feed_speed_tool(ngc_block_t& block) {
  if (const auto f = block.take('f')) {
    if (*f < 0) fail(block.text('f'), "negative feed rate");
    state_.feed = *f * state_.mm_per_unit;
  }
  // The spindle speed does not shape the path; it is only checked.
  if (const auto s = block.take('s'); s && *s < 0) fail(block.text('s'), "negative spindle speed");
  if (const auto t = block.take('t')) {
    const int tool = whole(*t, block.text('t'), 0, 1'000'000);
    if (options_.tools && !options_.tools->contains(tool))
      fail(block.text('t'), "tool " + std::to_string(tool) + " is not in the tool table");
    state_.next_tool = tool;
  }
  if (find_code(block.m, 60)) state_.tool = state_.next_tool;
}

bool ngc_machine_t::ends_program(const ngc_block_t& block) const {
  return find_code(block.m, 20) || find_code(block.m, 300);
}

void ngc_machine_t::run_non_modal(ngc_block_t& block) {
  for (const ngc_code_t& g : block.g) {
    if (g.code == 40) {
      const auto p = block.take('p');
      if (!p || *p < 0) fail(g.text, "dwell needs a P of zero or more seconds");
    } else if (g.code == 100) {
      set_offsets(block, g);
    } else if (g.code == 280 || g.code == 300) {
      go_home(block, g);
    }
  }
}

void ngc_machine_t::set_offsets(ngc_block_t& block, const ngc_code_t& g10) {
  const auto l = block.take('l');
  if (!l || (*l != 2 && *l != 20)) fail(l ? block.text('l') : g10.text, "G10 supports L2 and L20 only");
  const auto p = block.take('p');
  if (!p) fail(g10.text, "G10 needs P to name the work system");
  const int given = whole(*p, block.text('p'), 0, 6);
  const int system = given == 0 ? state_.work_system : given;
  for (int axis = 0; axis < 3; ++axis) {
    const auto v = block.take(static_cast<char>('x' + axis));
    if (!v) continue;
    // L2 states the offset; L20 chooses it so the machine stands at v now.
    const double value = *v * state_.mm_per_unit;
    params_.set(work_offset_param(system, axis), *l == 2 ? value : state_.position[axis] - value);
  }
}

}  // namespace mill
