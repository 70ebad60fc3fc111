#pragma once

// Carries out evaluated NGC blocks: the modal state machine and the moves
// it produces. Within a block the steps run in this order, whatever the
// order of the words:
//   codes checked   every G and M supported, at most one per modal group
//   modes           plane, units, distance modes, work system, motion mode
//   feed, speed, tool   F S T, then M6
//   non-modal       G4 dwell, G10 offsets, G28/G30 return home
//   motion          G0 G1 G2 G3 in the motion mode, G53 machine coordinates
//   leftovers       a word no step took stops the run
// Units apply to the whole block they are switched on: "G20 G1 X1 F10"
// moves one inch at ten inches a minute.

#include <array>
#include <cstdint>
#include <string>

#include "interp/interp_options_t.h"
#include "interp/modal_state_t.h"
#include "interp/ngc_block_t.h"
#include "interp/param_store_t.h"
#include "interp/program_t.h"

namespace mill {

class ngc_machine_t {
 public:
  // params and out are borrowed and must outlive the machine; moves are
  // appended to out.moves.
  ngc_machine_t(const interp_options_t& options, param_store_t& params, program_t& out);

  // Returns false once the block ends the program (M2, M30). Throws
  // source_error_t naming the offending word.
  bool execute(ngc_block_t& block, std::uint32_t file, int line);

 private:
  [[noreturn]] void fail(const std::string& word, const std::string& reason) const;
  int whole(double value, const std::string& word, int min, int max) const;

  void check_codes(const ngc_block_t& block) const;
  void set_modes(ngc_block_t& block);
  void set_motion_mode(int code);
  void set_feed_speed_tool(ngc_block_t& block);
  bool ends_program(const ngc_block_t& block) const;
  void run_non_modal(ngc_block_t& block);
  void set_offsets(ngc_block_t& block, const ngc_code_t& g10);

  // In ngc_motion.cpp.
  void go_home(ngc_block_t& block, const ngc_code_t& code);
  void run_motion(ngc_block_t& block, const ngc_code_t* g53);
  void arc_to(ngc_block_t& block);
  void place_centre(ngc_block_t& block, arc_t& arc, const std::string& word);
  vec3_t target(ngc_block_t& block, bool machine_coords);
  vec3_t work_offset() const;
  std::string motion_word(const ngc_block_t& block) const;
  // word is blamed when the move breaks a limit of the options.
  void emit(move_kind kind, const vec3_t& to, const std::string& word);

  const interp_options_t& options_;
  param_store_t& params_;
  program_t& out_;
  modal_state_t state_;
  std::uint32_t file_ = 0;
  int line_ = 0;
};

}  // namespace mill
