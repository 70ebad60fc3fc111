#include "milling/milling_contours.h"

#include <cstring>
#include <new>

#include "cbtr/step/step_result_t.h"
#include "milling/milling_contours_t.h"

extern "C" {

milling_contours_t* milling_contours__new_by_substraction(const substraction_t* s, const double* stock_to_tool,
                                                          double* box_out) noexcept {
  if (!s || !stock_to_tool) return nullptr;
  geom::mat4d pose{};
  std::memcpy(pose.m.data(), stock_to_tool, sizeof pose.m);
  try {
    auto* c = new mech::milling_contours_t(mech::milling_contours_t::from_step(*s, pose));
    if (box_out) std::memcpy(box_out, c->box.v.data(), sizeof c->box.v);
    return c;
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void milling_contours__delete(milling_contours_t* c) noexcept { delete c; }

double milling_contours__get_plural_cutting_width(const milling_contours_t* c, double z) noexcept {
  return c->plural_cutting_width(z);
}

double milling_contours__get_projected_area(const milling_contours_t* c, const double* direction) noexcept {
  return c->projected_area({direction[0], direction[1], direction[2]});
}
}
