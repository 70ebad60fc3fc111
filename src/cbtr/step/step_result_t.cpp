#include "cbtr/step/step_result_t.h"

#include <cstring>

namespace cbtr {

std::uint32_t step_result_t::contours_buffer_size() const {
  std::uint32_t size = 4;
  for (const contour_t& p : _contours) size += 4 + 24 * static_cast<std::uint32_t>(p.size());
  return size;
}

void step_result_t::write_contours(void* buffer) const {
  auto* out = static_cast<unsigned char*>(buffer);
  const auto put = [&out](const void* data, std::size_t n) {
    std::memcpy(out, data, n);
    out += n;
  };
  const auto count = static_cast<std::uint32_t>(_contours.size());
  put(&count, 4);
  for (const contour_t& p : _contours) {
    const auto points = static_cast<std::uint32_t>(p.size());
    put(&points, 4);
    for (const contour_point_t& q : p) put(q.data(), 24);
  }
}

double step_result_t::contour_area() const { return cbtr::contour_area(_contours); }

void step_result_t::expand_to_box3d(geom::box3d* box) {
  for (const contour_t& p : _contours)
    for (const contour_point_t& q : p) box->expand(geom::vec3d{q[0], q[1], q[2]});
}

void step_result_t::expand_to_box3d(geom::box3d* box, const geom::mat4d* mat) {
  for (const contour_t& p : _contours)
    for (const contour_point_t& q : p) box->expand(mat->apply(geom::vec3d{q[0], q[1], q[2]}));
}

}  // namespace cbtr
