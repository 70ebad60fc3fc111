#include "host/tool_set.h"

#include "host/tool_mesh.h"

namespace mill {

tool_set_t::tool_set_t(const program_t& program, const tool_table_t& table, const tooling_t& tooling)
    : program_(program), table_(table), tooling_(tooling) {}

tool_desc_t tool_set_t::desc(int number) const {
  if (const auto own = program_.tools.find(number); own != program_.tools.end()) return own->second;
  if (const auto listed = table_.find(number); listed != table_.end()) return listed->second;
  return tooling_.tool;
}

double tool_set_t::length(int number) const { return cutter_length(desc(number), tooling_); }

const tool_model_t& tool_set_t::model(int number) {
  std::unique_ptr<tool_model_t>& slot = models_[number];
  if (!slot)
    slot = std::make_unique<tool_model_t>(tool_surface(desc(number), length(number), tooling_.cell * facet_per_cell));
  return *slot;
}

}  // namespace mill
