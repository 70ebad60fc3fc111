#include "cbtr/step/step_result_t.h"
#include "disp/Drawing.h"

namespace cbtr {

namespace {

// Each polygon closed: the segment from every point to the next, the last
// back to the first. A two-point polygon thus gives its segment twice.
std::vector<double> closed_polygon_lines(const std::vector<contour_t>& polygons) {
  std::vector<double> out;
  for (const contour_t& p : polygons)
    for (std::size_t i = 0; i < p.size(); ++i)
      for (const contour_point_t& q : {p[i], p[(i + 1) % p.size()]}) out.insert(out.end(), q.begin(), q.end());
  return out;
}

}  // namespace

void step_result_t::display(disp::bind* b) {
  std::shared_ptr<disp::IDisplayee> drawing = _contour_drawing.load();
  if (!drawing) {
    const std::vector<double> lines = closed_polygon_lines(_contours);
    if (lines.empty()) return;
    drawing = std::make_shared<disp::line_drawing_t>(lines.data(), lines.size());
    _contour_drawing.store(drawing);
  }
  drawing->display(b);
}

}  // namespace cbtr
