#include "host/mill_loop.h"

#include <chrono>
#include <cmath>

namespace mill {

loop_result_t run_moves(const std::vector<move_t>& moves, const move_cutter_t& cut, const std::function<bool()>& stop,
                        progress_view_t& progress) {
  loop_result_t result;
  result.records.reserve(moves.size());
  const auto begin = std::chrono::steady_clock::now();
  for (const move_t& m : moves) {
    const bool first = result.records.empty();
    const vec3_t& from = first ? m.end : m.start;
    const vec3_t& from_axis = first ? m.axis_end : m.axis_start;
    move_record_t r{m.file, m.line, m.kind, std::hypot(m.end[0] - from[0], m.end[1] - from[1], m.end[2] - from[2]), {}};
    r.outcome = cut(m, tool_pose(from, from_axis), tool_pose(m.end, m.axis_end));
    result.records.push_back(r);
    progress.update(result.records.size());
    if (result.records.size() < moves.size() && stop()) {
      result.interrupted = true;
      break;
    }
  }
  progress.finish();
  result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  return result;
}

}  // namespace mill
