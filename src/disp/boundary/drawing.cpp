// NOLINTBEGIN(bugprone-reserved-identifier): the family__verb names are the boundary's fixed
// contract.
#include "disp/drawing.h"

#include <algorithm>
#include <new>

#include "disp/IDisplayee.h"
#include "disp/drawing_t.h"

extern "C" {

drawing_t* drawing__new(const double* data, int32_t count, uint32_t kind) noexcept {
  if (count < 0 || (count > 0 && !data)) return nullptr;
  drawing_t* made = nullptr;
  try {
    disp::with_rail_kind(kind, [&](auto rail) {
      auto* d = new disp::drawing_t<decltype(rail)>;
      d->upload(data, static_cast<std::size_t>(count));
      made = d;
    });
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
  return made;
}

void drawing__display(drawing_t* d, uint32_t kind, disp::bind* b, uint32_t mode) noexcept {
  if (!d || !b) return;
  disp::with_rail_kind(kind, [&](auto rail) { static_cast<disp::drawing_t<decltype(rail)>*>(d)->display(*b, mode); });
}

void drawing__get_box3d(drawing_t* d, uint32_t kind, double* box) noexcept {
  if (!d || !box) return;
  disp::with_rail_kind(kind, [&](auto rail) {
    const geom::box3d got = static_cast<disp::drawing_t<decltype(rail)>*>(d)->box();
    std::copy(got.v.begin(), got.v.end(), box);
  });
}

void drawing__delete(drawing_t* d, uint32_t kind) noexcept {
  if (d && kind <= 7) d->release();
}

void Displayee__Render(disp::IDisplayee* obj, disp::bind* b) noexcept {
  if (obj && b) obj->display(b);
}

void Displayee__ExpandToBox3d(disp::IDisplayee* obj, double* box) noexcept {
  if (obj && box) obj->expand_to_box3d(reinterpret_cast<geom::box3d*>(box));
}
}
// NOLINTEND(bugprone-reserved-identifier)
