#include "cbtr/build/edge_tips_t.h"

#include "cbtr/model/cell_numbering.h"

namespace cbtr {

edge_tips_t::edge_tips_t() {
  constexpr double inf = std::numeric_limits<double>::infinity();
  for (auto& edge : sides) {
    edge[0].value = inf;
    edge[1].value = -inf;
  }
}

double edge_tips_t::tip(int e) const {
  const std::uint32_t code = edge_code(corners, e);
  if (code == edge_code_low_solid) return sides[e][1].value;
  if (code == edge_code_high_solid) return sides[e][0].value;
  return std::numeric_limits<double>::quiet_NaN();
}

}  // namespace cbtr
