#pragma once

// The closed exact mesh on which the carve walks: unique exact points,
// directed lines that know their reverse twin and owning triangle, and
// triangles. It is the point stock itself (its display face), with the
// stocks of lines and triangles as members.
//
// Seamless: every line has a twin, and that twin has an owning triangle.
// A soup with open edges or repeated triangles still builds; it is only not
// seamless, which the carve reports when it gets there.

#include <array>
#include <mutex>
#include <vector>

#include "geom/IBoxable.h"
#include "geom/topo/topo_tri3wfr_t.h"

namespace geom {

template <class F>
class topo_stl3fr_t : public topo_point3fr_stock_t<F>, public IBoxable {
 public:
  using point_t = topo_point3fr_t<F>;
  using line_t = topo_line3fr_t<F>;
  using tri_t = topo_tri3fr_t<F>;
  using exact_tri_t = std::array<vec3<F>, 3>;

  // From count records of twelve doubles (corners, then an unused normal):
  // each coordinate becomes the simplest fraction within resolution of it,
  // here and only here. Triangles that collapse to two equal points are
  // dropped.
  topo_stl3fr_t(const double* records, std::size_t count, double resolution);
  // From exact triangles, with no conversion.
  explicit topo_stl3fr_t(const std::vector<exact_tri_t>& tris);
  virtual ~topo_stl3fr_t();

  std::size_t tris_size() const { return _tri_stock.size(); }
  std::size_t lines_size() const { return _line_stock.size(); }
  topo_line3fr_stock_t<F>& line_stock() { return _line_stock; }
  topo_tri3fr_stock_t<F>& tri_stock() { return _tri_stock; }

  // Corners of every triangle, in stock order.
  std::vector<exact_tri_t> to_exact_tris() const;

  // Twelve doubles per triangle in stock order: corners, then the unit
  // normal (computed once and kept; NaN for a triangle without area).
  void get_tris(double* out);

  // Removes one triangle, then its lines, then any corner left unreferenced.
  void del_tri(tri_t* tri);

  bool is_seamless() const;
  // Sets the integer normal of every triangle with area, once: a tool swept
  // move after move reads them each time. Safe from several threads.
  void ensure_integer_normals();

  void expand_to_box3d(box3d* box) override;
  void expand_to_box3d(box3d* box, const mat4d* mat) override;

 private:
  void _reserve(std::size_t tris);
  void _add_tri(const std::array<point_t*, 3>& p);
  void _link_twins();
  static vec3d _unit_normal(tri_t& tri);

  topo_line3fr_stock_t<F> _line_stock;
  topo_tri3fr_stock_t<F> _tri_stock;
  std::once_flag _integer_normals;
};

extern template class topo_stl3fr_t<fr>;

}  // namespace geom
