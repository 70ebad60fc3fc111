#pragma once

// What the command line asks of one run. Unset optionals take the defaults
// that run_setup chooses and reports.

#include <array>
#include <optional>
#include <string>

#include "interp/tool_desc_t.h"

namespace mill {

enum class stock_kind {
  feed_box,  // the box the program's feed moves span
  box,
  stl,
};

struct stock_spec_t {
  stock_kind kind = stock_kind::feed_box;
  std::array<double, 6> box{};  // minimum x, y, z, then maximum x, y, z
  std::string stl_path;
  bool allow_open = false;  // build from an STL surface that does not close
};

struct mill_options_t {
  std::string program;  // empty: the built-in sample
  stock_spec_t stock;
  std::optional<double> cell;  // mm
  std::optional<tool_desc_t> tool;
  std::optional<double> tool_length;  // mm
  std::string tool_table;             // empty: none
  std::string out_dir;                // empty: chosen from the program's name
  bool help = false;
};

}  // namespace mill
