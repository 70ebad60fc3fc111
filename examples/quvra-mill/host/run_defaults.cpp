#include "host/run_defaults.h"

#include <algorithm>
#include <limits>
#include <sstream>
#include <stdexcept>

#include "interp/tool_desc_parse.h"

namespace mill {

namespace {

constexpr double default_cell = 0.2;
constexpr double default_tool_diameter = 6;
constexpr double default_tool_length = 40;

std::string box_text(const std::array<double, 6>& b) {
  std::ostringstream s;
  s << "box:" << b[0] << ',' << b[1] << ',' << b[2] << ',' << b[3] << ',' << b[4] << ',' << b[5];
  return s.str();
}

}  // namespace

tooling_t choose_tooling(const mill_options_t& options, std::vector<std::string>& notes) {
  tooling_t t;
  t.cell = options.cell.value_or(default_cell);
  if (!options.cell) notes.push_back("cell: 0.2 mm (default; --cell to change)");
  t.tool = options.tool.value_or(flat_tool(default_tool_diameter));
  if (!options.tool) notes.push_back("tool: flat:6, a 6 mm flat end mill (default; --tool to change)");
  t.tool_length = options.tool_length.value_or(default_tool_length);
  if (!options.tool_length && t.tool.h == 0) notes.push_back("tool length: 40 mm (default; --tool-length to change)");
  return t;
}

std::array<double, 6> feed_box(const program_t& program, double tool_diameter) {
  constexpr double inf = std::numeric_limits<double>::infinity();
  std::array<double, 6> box{inf, inf, inf, -inf, -inf, -inf};
  for (const move_t& m : program.moves) {
    if (m.kind == move_kind::rapid) continue;
    for (const vec3_t& p : {m.start, m.end})
      for (int i = 0; i < 3; ++i) {
        box[i] = std::min(box[i], p[i]);
        box[i + 3] = std::max(box[i + 3], p[i]);
      }
  }
  if (!(box[0] <= box[3]))
    throw std::invalid_argument("the program has no feed moves to size a stock by; give --stock");
  for (int i = 0; i < 3; ++i) {
    if (box[i + 3] - box[i] >= tool_diameter) continue;
    const double mid = (box[i] + box[i + 3]) / 2;
    box[i] = std::min(box[i], mid - tool_diameter / 2);
    box[i + 3] = std::max(box[i + 3], mid + tool_diameter / 2);
  }
  return box;
}

stock_spec_t choose_stock(const mill_options_t& options, const program_t& program, double tool_diameter,
                          std::vector<std::string>& notes) {
  if (options.stock.kind != stock_kind::feed_box) return options.stock;
  stock_spec_t spec;
  spec.kind = stock_kind::box;
  spec.box = feed_box(program, tool_diameter);
  notes.push_back("stock: " + box_text(spec.box) + ", the box the feed moves span (default; --stock to change)");
  return spec;
}

double cutter_length(const tool_desc_t& tool, const tooling_t& tooling) {
  return tool.h > 0 ? tool.h : tooling.tool_length;
}

}  // namespace mill
