#pragma once

// The welded floating mesh: a triangle soup made into shared points, shared
// directed lines linked to their reverse twins, and triangles linked to
// both. It is what the display draws: smooth vertex normals that keep
// creases sharper than round_cos sharp, and bends that tell feature lines
// from smooth ones.
//
// Points weld by exact coordinates (0.0 and -0.0 alike). A triangle with two
// equal points is dropped, and one with the same three points in the same
// cyclic order as an earlier one is not added again; one of zero area with
// three different points stays, with a non-finite normal.

#include <cstdint>
#include <deque>
#include <memory>

#include "common/pointer_hash_set.h"
#include "disp/IDisplayee.h"
#include "geom/stl3d_t.h"
#include "geom/topo/topo_elements3.h"

namespace geom {

template <class T>
class topo_stl3 : public disp::IDisplayee {
 public:
  using point_t = topo_point3<T>;
  using line_t = topo_line3<T>;
  using tri_t = topo_tri3<T>;

  static constexpr double default_round_cos = 0.8;  // about 37 degrees

  // From count records of twelve doubles (vertices, then an ignored normal).
  topo_stl3(const double* records, std::size_t count);
  explicit topo_stl3(const stl3d_t& soup);
  virtual ~topo_stl3() = default;
  topo_stl3(const topo_stl3&) = delete;
  topo_stl3& operator=(const topo_stl3&) = delete;

  std::size_t point_count() const { return _points.size(); }
  std::size_t line_count() const { return _lines.size(); }
  std::size_t tri_count() const { return _tris.size(); }
  std::deque<point_t>& points() { return _points; }
  std::deque<line_t>& lines() { return _lines; }
  std::deque<tri_t>& tris() { return _tris; }

  T round_cos() const { return _round_cos; }
  // Takes effect for vertex normals computed from now on.
  void set_round_cos(T c);

  // Per corner of tri: the mean of the unit normals of the triangles at that
  // point that meet tri at an angle whose cosine is above round_cos, tri
  // itself included, normalised.
  const std::array<vec3<T>, 3>& vertex_normals(tri_t& tri);

  // Squared cosine between the cross products on both sides of line, stored
  // in the line and its twin; NaN for an open border.
  T bend(line_t& line);

  // Twelve doubles per triangle: corners, then the unit normal, in the
  // order the triangles were made.
  void get_tris(double* out);

  // The box of all points, computed once.
  const box3d& box();
  void expand_to_box3d(box3d* out) override;
  void expand_to_box3d(box3d* out, const mat4d* mat) override;

  // Feature lines in black, then the faces in b's colour. A mesh is drawn
  // by one thread.
  using disp::IDisplayee::display;
  void display(disp::bind* b) override;
  // The feature lines alone, in b's colour.
  void display_edges(disp::bind* b);

 private:
  void _make_drawings();

  void _build(const double* records, std::size_t count);
  point_t* _point_at(T x, T y, T z);
  // Lines are found through their start point's short list rather than a
  // table of all lines: the point is in cache already, a large table never.
  line_t* _line_from(point_t* p0, point_t* p1);
  line_t* _line_between(point_t* p0, point_t* p1);
  void _add_tri(point_t* a, point_t* b, point_t* c);

  std::deque<point_t> _points;
  std::deque<line_t> _lines;
  std::deque<tri_t> _tris;
  common::pointer_hash_set<point_t> _point_index;
  std::array<point_t*, 4096> _recent_points{};
  T _round_cos = default_round_cos;
  T _round_cos_sq = default_round_cos * default_round_cos;
  std::unique_ptr<box3d> _box;
  std::shared_ptr<disp::IDisplayee> _edge_drawing, _face_drawing;
};

extern template class topo_stl3<double>;

using topo_stl3d = topo_stl3<double>;

}  // namespace geom
