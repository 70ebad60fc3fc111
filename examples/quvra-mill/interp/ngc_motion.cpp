// The motion step of ngc_machine_t: where a block's axis words lead, and the
// moves that take the tool there.

#include <cmath>
#include <stdexcept>

#include "interp/arc_centre.h"
#include "interp/ngc_machine_t.h"
#include "interp/move_limits.h"
#include "interp/ngc_params.h"

namespace mill {

namespace {

constexpr char axis_letters[] = "xyz";
constexpr char centre_letters[] = "ijk";

bool any_axis(const ngc_block_t& block) { return block.has('x') || block.has('y') || block.has('z'); }

}  // namespace

vec3_t ngc_machine_t::work_offset() const {
  vec3_t offset{};
  for (int axis = 0; axis < 3; ++axis) offset[axis] = params_.get(work_offset_param(state_.work_system, axis));
  return offset;
}

vec3_t ngc_machine_t::target(ngc_block_t& block, bool machine_coords) {
  const vec3_t origin = machine_coords ? vec3_t{} : work_offset();
  vec3_t to = state_.position;
  for (int axis = 0; axis < 3; ++axis) {
    const auto v = block.take(axis_letters[axis]);
    if (!v) continue;
    const double distance = *v * state_.mm_per_unit;
    to[axis] = state_.absolute || machine_coords ? origin[axis] + distance : to[axis] + distance;
  }
  return to;
}

std::string ngc_machine_t::motion_word(const ngc_block_t& block) const {
  for (const ngc_code_t& g : block.g)
    if (g.code == 0 || g.code == 10 || g.code == 20 || g.code == 30) return g.text;
  for (const char letter : {'x', 'y', 'z'})
    if (block.has(letter)) return block.text(letter);
  return {};
}

void ngc_machine_t::emit(move_kind kind, const vec3_t& to, const std::string& word) {
  if (to == state_.position) return;
  try {
    check_reach(to, options_);
    check_room(out_.moves.size(), 1, options_);
  } catch (const std::invalid_argument& e) {
    fail(word, e.what());
  }
  move_t move;
  move.file = file_;
  move.line = static_cast<std::uint32_t>(line_);
  move.kind = kind;
  move.start = state_.position;
  move.end = to;
  move.feed = kind == move_kind::rapid ? 0 : state_.feed;
  move.tool = state_.tool;
  out_.moves.push_back(move);
  state_.position = to;
}

void ngc_machine_t::go_home(ngc_block_t& block, const ngc_code_t& code) {
  // With axis words the tool passes through the point they give, then only
  // those axes go home; without, every axis goes home.
  const std::array<bool, 3> named{block.has('x'), block.has('y'), block.has('z')};
  const bool any = any_axis(block);
  emit(move_kind::rapid, target(block, false), code.text);
  vec3_t home = state_.position;
  for (int axis = 0; axis < 3; ++axis)
    if (named[axis] || !any) home[axis] = params_.get(code.code == 280 ? g28_home_param(axis) : g30_home_param(axis));
  emit(move_kind::rapid, home, code.text);
}

void ngc_machine_t::run_motion(ngc_block_t& block, const ngc_code_t* g53) {
  const bool straight = state_.motion == motion_mode::rapid || state_.motion == motion_mode::linear;
  if (g53 && !straight) fail(g53->text, "G53 needs G0 or G1");
  if (g53 && !state_.absolute) fail(g53->text, "G53 needs G90");
  if (state_.motion == motion_mode::none) {
    if (any_axis(block)) fail(motion_word(block), "axis word without a motion mode");
    return;
  }
  const bool arc_words = block.has('i') || block.has('j') || block.has('k') || block.has('r');
  if (!any_axis(block) && (straight || !arc_words)) return;
  if (state_.motion != motion_mode::rapid && state_.feed <= 0) fail(motion_word(block), "feed rate is zero");
  if (straight) {
    const bool rapid = state_.motion == motion_mode::rapid;
    const std::string word = motion_word(block);
    emit(rapid ? move_kind::rapid : move_kind::feed, target(block, g53 != nullptr), word);
  } else {
    arc_to(block);
  }
}

void ngc_machine_t::arc_to(ngc_block_t& block) {
  const std::string word = motion_word(block);
  arc_t arc;
  arc.start = state_.position;
  arc.end = target(block, false);
  arc.plane = state_.plane;
  arc.ccw = state_.motion == motion_mode::arc_ccw;
  if (const auto p = block.take('p')) arc.extra_turns = whole(*p, block.text('p'), 1, 10'000) - 1;
  place_centre(block, arc, word);
  std::vector<vec3_t> points;
  try {
    // A far centre swings the arc out of reach whatever its ends: its
    // chords are checked one by one, but only after they were all made.
    const double radius = arc_radius(arc);
    const std::array<int, 3> axes = plane_axes(arc.plane);
    check_reach({std::abs(arc.centre[axes[0]]) + radius, std::abs(arc.centre[axes[1]]) + radius, 0}, options_);
    points = linearize_arc(arc, options_.chord_tolerance, options_.max_moves - out_.moves.size());
  } catch (const std::invalid_argument& e) {
    fail(word, e.what());
  }
  for (const vec3_t& point : points) emit(move_kind::arc_segment, point, word);
}

void ngc_machine_t::place_centre(ngc_block_t& block, arc_t& arc, const std::string& word) {
  const std::array<int, 3> axes = plane_axes(arc.plane);
  const char l0 = centre_letters[axes[0]];
  const char l1 = centre_letters[axes[1]];
  const bool by_centre = block.has(l0) || block.has(l1);
  const auto r = block.take('r');
  if (r && by_centre) fail(block.text('r'), "an arc takes a centre or a radius, not both");
  if (!r && !by_centre) fail(word, "an arc needs a centre (I J K) or a radius (R)");
  if (state_.arc_absolute && by_centre && !(block.has(l0) && block.has(l1)))
    fail(block.text(block.has(l0) ? l0 : l1), "an absolute centre needs both its words");
  try {
    if (r) {
      place_centre_by_radius(arc, *r * state_.mm_per_unit);
      return;
    }
    const vec3_t origin = state_.arc_absolute ? work_offset() : arc.start;
    for (const int axis : {axes[0], axes[1]})
      arc.centre[axis] = origin[axis] + block.take(centre_letters[axis]).value_or(0) * state_.mm_per_unit;
    check_end_on_circle(arc);
  } catch (const std::invalid_argument& e) {
    fail(word, e.what());
  }
}

}  // namespace mill
