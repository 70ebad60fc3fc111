#include "cbtr/tool/cached_tris_t.h"

namespace cbtr {

cached_tris_t::cached_tris_t(tool_tris_t&& tris) {
  _tris.reserve(tris.size());
  for (tool_tri_t& t : tris) {
    for (geom::vec3fr* corner : {&t.a, &t.b, &t.c})
      for (geom::fr* c : {&corner->x, &corner->y, &corner->z}) c->pack();
    for (geom::fr* c : {&t.normal.x, &t.normal.y, &t.normal.z}) c->evaluate();
    if (is_zero(t.normal)) continue;
    _tris.emplace_back(std::move(t));
  }
  tool_tris_t().swap(tris);
}

}  // namespace cbtr
