#include "milling/milling_contours_t.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "cbtr/step/step_result_t.h"
#include "milling/vector_ops.h"

namespace mech {

milling_contours_t milling_contours_t::from_step(const cbtr::step_result_t& step, const geom::mat4d& stock_to_tool) {
  milling_contours_t out;
  out.loops.reserve(step.contours().size());
  for (const cbtr::contour_t& polygon : step.contours()) {
    contour_loop_t& loop = out.loops.emplace_back();
    loop.reserve(polygon.size());
    // The step winds its polygons with the stock's new surface, facing into
    // the tool; seen from the tool they run the other way round, so that a
    // loop's fan faces out of the tool, into the material.
    for (auto p = polygon.rbegin(); p != polygon.rend(); ++p) {
      loop.push_back(stock_to_tool.apply({(*p)[0], (*p)[1], (*p)[2]}));
      out.box.expand(loop.back());
    }
  }
  return out;
}

double milling_contours_t::plural_cutting_width(double z) const {
  std::size_t total = 0;
  std::size_t above = 0;
  for (const contour_loop_t& loop : loops) {
    total += loop.size();
    for (const geom::vec3d& p : loop) above += p.z > z ? 1 : 0;
  }
  if (total == 0) return 0;
  const bool flank_only = above > total - above;
  double lo = std::numeric_limits<double>::infinity();
  double hi = -lo;
  bool poisoned = false;
  for (const contour_loop_t& loop : loops) {
    for (const geom::vec3d& p : loop) {
      if (flank_only && !(p.z > z)) continue;
      poisoned = poisoned || std::isnan(p.y);
      lo = std::min(lo, p.y);
      hi = std::max(hi, p.y);
    }
  }
  return poisoned ? std::numeric_limits<double>::quiet_NaN() : hi - lo;
}

namespace {

// The loop's fan from its first point, up to the first term that is not a
// number: what was summed before it stands.
geom::vec3d fan_area_vector(const contour_loop_t& loop) {
  geom::vec3d sum{0, 0, 0};
  for (std::size_t i = 1; i + 1 < loop.size(); ++i) {
    const geom::vec3d term = geom::cross(loop[i] - loop[0], loop[i + 1] - loop[0]);
    if (!is_finite(term)) break;
    sum = sum + term;
  }
  return sum;
}

}  // namespace

double milling_contours_t::projected_area(const geom::vec3d& direction) const {
  const geom::vec3d e{direction.x, std::abs(direction.y), direction.z > 0 ? 0.0 : -direction.z};
  double area = 0;
  for (const contour_loop_t& loop : loops) {
    if (loop.size() >= 3) area += 0.5 * std::abs(geom::dot(fan_area_vector(loop), e));
  }
  return area;
}

}  // namespace mech
