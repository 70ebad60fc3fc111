#pragma once

// The cutters of a run by tool number. A number finds its cutter in the
// program's own definitions (APT CUTTER) first, then in the tool table, and
// otherwise is the tool the command line put in the spindle. Meshes are made
// on first use, once per number.

#include <map>
#include <memory>

#include "host/run_defaults.h"
#include "host/tool_model.h"
#include "interp/program_t.h"

namespace mill {

// Facets of a tool stay within this fraction of a cell from the true
// surface: finer would only slow the sweeps, which the cells cannot show.
inline constexpr double facet_per_cell = 0.125;

class tool_set_t {
 public:
  // Neither program nor table is copied; both must outlive the set.
  tool_set_t(const program_t& program, const tool_table_t& table, const tooling_t& tooling);

  tool_desc_t desc(int number) const;
  double length(int number) const;

  // Throws std::invalid_argument when the cutter's outline cannot be made
  // at its length, std::runtime_error when the library makes no mesh.
  const tool_model_t& model(int number);

 private:
  const program_t& program_;
  const tool_table_t& table_;
  tooling_t tooling_;
  std::map<int, std::unique_ptr<tool_model_t>> models_;
};

}  // namespace mill
