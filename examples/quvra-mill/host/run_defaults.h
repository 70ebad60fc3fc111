#pragma once

// The defaults that let a bare program cut: a 6 mm flat end mill 40 mm long,
// 0.2 mm cells, and a stock the size of the box that the feed moves span.
// Each default taken adds a line to notes, so the output can say what was
// assumed.

#include <array>
#include <string>
#include <vector>

#include "host/mill_options_t.h"
#include "interp/program_t.h"

namespace mill {

struct tooling_t {
  double cell = 0;
  tool_desc_t tool;        // in the spindle before any change
  double tool_length = 0;  // for cutters whose description gives no height
};

tooling_t choose_tooling(const mill_options_t& options, std::vector<std::string>& notes);

// The box of the start and end points of the feed and arc moves; rapids are
// left out, since they are where the tool is not cutting. An axis along which
// those moves do not spread (a 2D contour) widens to tool_diameter, centred
// on them. Throws std::invalid_argument when the program has no feed moves.
std::array<double, 6> feed_box(const program_t& program, double tool_diameter);

// options.stock with feed_box in place of a default stock.
stock_spec_t choose_stock(const mill_options_t& options, const program_t& program, double tool_diameter,
                          std::vector<std::string>& notes);

// The length of a cutter: its own height when its description has one,
// else the tooling's.
double cutter_length(const tool_desc_t& tool, const tooling_t& tooling);

}  // namespace mill
