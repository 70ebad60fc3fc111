// The mesh's drawings, built together at first use and kept for its life: a
// later change of round_cos does not rebuild them.

#include "disp/Drawing.h"
#include "disp/display_edged.h"
#include "geom/topo/mesh_vertices.h"
#include "geom/topo/topo_stl3.h"

namespace geom {

template <class T>
void topo_stl3<T>::_make_drawings() {
  if (_face_drawing) return;
  const std::vector<double> edges = edge_line_vertices(*this);
  const std::vector<double> faces = lit_tri_vertices(*this);
  _edge_drawing = std::make_shared<disp::line_drawing_t>(edges.data(), edges.size());
  _face_drawing = std::make_shared<disp::lit_tri_drawing_t>(faces.data(), faces.size());
}

template <class T>
void topo_stl3<T>::display(disp::bind* b) {
  _make_drawings();
  disp::display_edged(b, *_edge_drawing, *_face_drawing);
}

template <class T>
void topo_stl3<T>::display_edges(disp::bind* b) {
  _make_drawings();
  _edge_drawing->display(b);
}

template void topo_stl3<double>::_make_drawings();
template void topo_stl3<double>::display(disp::bind*);
template void topo_stl3<double>::display_edges(disp::bind*);

}  // namespace geom
