#pragma once

// Triangles of the exact mesh and their stock, iterated in insertion order.
// Corners p0, p1, p2 are counter-clockwise seen from outside, and line i
// runs from corner i to corner i+1: every index calculation of the carve
// relies on that.

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "geom/topo/topo_line3wfr_t.h"

namespace geom {

template <class F>
struct topo_tri3fr_t {
  std::array<topo_point3fr_t<F>*, 3> p;
  std::array<topo_line3fr_t<F>*, 3> l;
  // The primitive integer direction of the normal; 0/0 until
  // reset_integer_normal runs.
  vec3<F> integer_normal = {F(), F(), F()};
  vec3d normal = {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::quiet_NaN(),
                  std::numeric_limits<double>::quiet_NaN()};
  topo_tri3fr_t* prev = nullptr;  // insertion order in the stock
  topo_tri3fr_t* next = nullptr;

  // cross(p1 - p0, p2 - p0), exact and unreduced: twice the area, along the
  // outward normal. Zero for a triangle without area.
  vec3<F> cross_product() const { return cross(p[1]->pos - p[0]->pos, p[2]->pos - p[0]->pos); }

  // Sets integer_normal to the primitive integer vector along
  // cross_product(). A triangle without area has no normal: that is a
  // broken contract here and ends the process.
  void reset_integer_normal() {
    vec3<F> n = cross_product();
    QV_CHECK(!(n.x.is_zero() && n.y.is_zero() && n.z.is_zero()),
             "topo_tri3fr_t::reset_integer_normal: a zero-area triangle has no normal");
    integer_normal = get_reduced_integer_vec(n);
  }
};

inline std::size_t hash_tri_address(const void* t) {
  return static_cast<std::size_t>(reinterpret_cast<std::uintptr_t>(t) * 0x9e3779b97f4a7c15ULL);
}

template <class F>
class topo_tri3fr_stock_t {
 public:
  using point_t = topo_point3fr_t<F>;
  using line_t = topo_line3fr_t<F>;
  using tri_t = topo_tri3fr_t<F>;

  topo_tri3fr_stock_t() = default;
  topo_tri3fr_stock_t(const topo_tri3fr_stock_t&) = delete;
  topo_tri3fr_stock_t& operator=(const topo_tri3fr_stock_t&) = delete;
  ~topo_tri3fr_stock_t() {
    for (tri_t* t = _first; t;) delete std::exchange(t, t->next);
  }

  std::size_t size() const { return _tris.size(); }
  void reserve(std::size_t n) { _tris.reserve(n); }
  tri_t* first() const { return _first; }

  // Makes the triangle over three points and their three lines, entered in
  // the corners' lists, and owning the lines. A line owned before is taken
  // over: such a mesh is simply not seamless.
  tri_t* add(const std::array<point_t*, 3>& p, const std::array<line_t*, 3>& l) {
    auto* tri = new tri_t{p, l};
    _tris.insert(tri, hash_tri_address(tri));
    tri->prev = _last;
    (_last ? _last->next : _first) = tri;
    _last = tri;
    for (point_t* corner : p) corner->tris.push_back(tri);
    for (line_t* line : l) line->tri = tri;
    return tri;
  }

  // Removes and frees a triangle, unlinking it from its corners and
  // disowning its lines; the lines and points themselves stay.
  void del(tri_t* tri) {
    const std::size_t h = hash_tri_address(tri);
    QV_CHECK(_tris.find(h, [&](const tri_t& t) { return &t == tri; }), "topo_tri3fr_stock_t::del: tri not in stock");
    for (int i = 0; i < 3; ++i) {
      QV_CHECK(std::erase(tri->p[i]->tris, tri) == 1, "topo_tri3fr_stock_t::del: point->tris missing the tri");
      tri->l[i]->tri = nullptr;
    }
    _tris.erase(tri, h);
    (tri->prev ? tri->prev->next : _first) = tri->next;
    (tri->next ? tri->next->prev : _last) = tri->prev;
    delete tri;
  }

 private:
  common::pointer_hash_set<tri_t> _tris;
  tri_t* _first = nullptr;
  tri_t* _last = nullptr;
};

}  // namespace geom
