#pragma once

// What one machining step hands back: whether it changed the stock, and the
// contact polygons between tool and stock for that step. It keeps no
// reference to the tree; substraction_t and addition_t differ only in kind.

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include "cbtr/step/contour_trace.h"
#include "disp/IDisplayee.h"

namespace cbtr {

class step_result_t : public disp::IDisplayee {
 public:
  step_result_t(std::uint32_t resolution, bool touched, std::vector<contour_t> contours)
      : _resolution(resolution), _touched(touched), _contours(std::move(contours)) {}
  virtual ~step_result_t() = default;

  std::uint32_t resolution() const { return _resolution; }
  bool touched() const { return _touched; }
  const std::vector<contour_t>& contours() const { return _contours; }

  // 4 + for each polygon 4 + 24 per point.
  std::uint32_t contours_buffer_size() const;
  // A 32-bit polygon count, then per polygon a 32-bit point count and its
  // points as three doubles each, without padding.
  void write_contours(void* buffer) const;
  double contour_area() const;

  void expand_to_box3d(geom::box3d* box) override;
  void expand_to_box3d(geom::box3d* box, const geom::mat4d* mat) override;

  // Every contour as a closed polygon of lines in b's colour; nothing
  // without contours. The drawing is made at the first call.
  using disp::IDisplayee::display;
  void display(disp::bind* b) override;

 private:
  std::uint32_t _resolution;
  bool _touched;
  std::vector<contour_t> _contours;
  std::atomic<std::shared_ptr<disp::IDisplayee>> _contour_drawing;
};

class substraction_t final : public step_result_t {
 public:
  using step_result_t::step_result_t;
};

class addition_t final : public step_result_t {
 public:
  using step_result_t::step_result_t;
};

}  // namespace cbtr
