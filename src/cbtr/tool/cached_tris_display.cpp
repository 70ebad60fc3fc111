#include <cmath>

#include "cbtr/tool/cached_tris_t.h"
#include "disp/Drawing.h"
#include "disp/display_edged.h"

namespace cbtr {

namespace {

// Per corner the unit normal of its triangle, then the corner.
std::vector<double> face_vertices(const std::vector<tri_extension_t>& tris) {
  std::vector<double> out;
  out.reserve(tris.size() * 18);
  for (const tri_extension_t& t : tris) {
    const geom::vec3d& n = t.normal_d;
    const double len = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
    for (const geom::vec3d& c : t.corner_d) out.insert(out.end(), {n.x / len, n.y / len, n.z / len, c.x, c.y, c.z});
  }
  return out;
}

// The three sides of every triangle as line pairs.
std::vector<double> outline_vertices(const std::vector<tri_extension_t>& tris) {
  std::vector<double> out;
  out.reserve(tris.size() * 18);
  for (const tri_extension_t& t : tris)
    for (int k = 0; k < 3; ++k)
      for (const geom::vec3d& c : {t.corner_d[k], t.corner_d[(k + 1) % 3]}) out.insert(out.end(), {c.x, c.y, c.z});
  return out;
}

}  // namespace

std::shared_ptr<disp::IDisplayee> cached_tris_t::_faces() {
  std::shared_ptr<disp::IDisplayee> faces = _drawing.load();
  if (faces && _second_drawing.load()) return faces;
  const std::vector<double> f = face_vertices(_tris);
  const std::vector<double> o = outline_vertices(_tris);
  faces = std::make_shared<disp::lit_tri_drawing_t>(f.data(), f.size());
  _second_drawing.store(std::make_shared<disp::line_drawing_t>(o.data(), o.size()));
  _drawing.store(faces);
  return faces;
}

void cached_tris_t::display(disp::bind* b) {
  const std::shared_ptr<disp::IDisplayee> faces = _faces();
  disp::display_edged(b, *_second_drawing.load(), *faces);
}

void cached_tris_t::expand_to_box3d(geom::box3d* box) { _faces()->expand_to_box3d(box); }

void cached_tris_t::expand_to_box3d(geom::box3d* box, const geom::mat4d* mat) { _faces()->expand_to_box3d(box, mat); }

}  // namespace cbtr
