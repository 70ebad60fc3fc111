#pragma once

// Points of the exact mesh, one per distinct exact position, and their stock.
// Every link between points, lines and triangles is checked when an element
// is removed: a broken link is a programming error that would let the carve
// walk a damaged mesh, so it ends the process at once.

#include <vector>

#include "common/check.h"
#include "common/pointer_hash_set.h"
#include "geom/fraction_geom_util"

namespace geom {

template <class F>
struct topo_line3fr_t;
template <class F>
struct topo_tri3fr_t;

template <class F>
struct topo_point3fr_t {
  vec3<F> pos;
  std::vector<topo_line3fr_t<F>*> forward_lines;   // lines starting here
  std::vector<topo_line3fr_t<F>*> backward_lines;  // lines ending here
  std::vector<topo_tri3fr_t<F>*> tris;             // triangles with a corner here

  bool is_unreferenced() const { return forward_lines.empty() && backward_lines.empty() && tris.empty(); }
};

// Owns its points; positions are kept packed, so that equal positions hash
// and compare alike.
template <class F>
class topo_point3fr_stock_t {
 public:
  using point_t = topo_point3fr_t<F>;

  topo_point3fr_stock_t() = default;
  topo_point3fr_stock_t(const topo_point3fr_stock_t&) = delete;
  topo_point3fr_stock_t& operator=(const topo_point3fr_stock_t&) = delete;
  ~topo_point3fr_stock_t() {
    _points.for_each([](point_t* p) { delete p; });
  }

  std::size_t points_size() const { return _points.size(); }
  void reserve_points(std::size_t n) { _points.reserve(n); }

  // The point at pos, made if absent. pos is packed in place.
  point_t* point_at(vec3<F>& pos) {
    const std::size_t h = hash(pos);
    if (point_t* found = _points.find(h, [&](const point_t& p) { return p.pos == pos; })) return found;
    auto* p = new point_t{pos, {}, {}, {}};
    _points.insert(p, h);
    return p;
  }

  // Removes and frees a point that nothing refers to any more.
  void del(point_t* point) {
    const std::size_t h = hash(point->pos);
    QV_CHECK(_points.find(h, [&](const point_t& p) { return &p == point; }),
             "topo_point3fr_stock_t::del: point not in stock");
    QV_CHECK(point->is_unreferenced(), "topo_point3fr_stock_t::del: point still referenced");
    _points.erase(point, h);
    delete point;
  }

  // Calls fn(point_t*) for every point, in no particular order.
  template <class Fn>
  void for_each_point(Fn&& fn) const {
    _points.for_each(fn);
  }

 private:
  common::pointer_hash_set<point_t> _points;
};

}  // namespace geom
