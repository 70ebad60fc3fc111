#pragma once

// Directed lines of the exact mesh and their stock. A line knows its reverse
// twin and the triangle that owns it (the one on its left).

#include <array>
#include <cstdint>
#include <limits>

#include "geom/topo/topo_point3wfr_stock_t.h"

namespace geom {

template <class F>
struct topo_line3fr_t {
  topo_point3fr_t<F>* p0;
  topo_point3fr_t<F>* p1;
  topo_line3fr_t* twin = nullptr;   // the line p1 -> p0, when there is one
  topo_tri3fr_t<F>* tri = nullptr;  // the owning triangle, when owned
  std::array<double, 3> vec = {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::quiet_NaN(),
                               std::numeric_limits<double>::quiet_NaN()};

  // p1 - p0, exact.
  vec3<F> vector() const { return p1->pos - p0->pos; }
};

inline std::size_t hash_line_key(const void* p0, const void* p1) {
  constexpr std::uint64_t golden = 0x9e3779b97f4a7c15ULL;
  const std::uint64_t h = reinterpret_cast<std::uintptr_t>(p0) * golden;
  return static_cast<std::size_t>(h ^ (reinterpret_cast<std::uintptr_t>(p1) + golden + (h << 6) + (h >> 2)));
}

template <class F>
class topo_line3fr_stock_t {
 public:
  using point_t = topo_point3fr_t<F>;
  using line_t = topo_line3fr_t<F>;

  topo_line3fr_stock_t() = default;
  topo_line3fr_stock_t(const topo_line3fr_stock_t&) = delete;
  topo_line3fr_stock_t& operator=(const topo_line3fr_stock_t&) = delete;
  ~topo_line3fr_stock_t() {
    _lines.for_each([](line_t* l) { delete l; });
  }

  std::size_t size() const { return _lines.size(); }
  void reserve(std::size_t n) { _lines.reserve(n); }

  line_t* find(const point_t* p0, const point_t* p1) const {
    return _lines.find(hash_line_key(p0, p1), [&](const line_t& l) { return l.p0 == p0 && l.p1 == p1; });
  }

  // The line p0 -> p1, made and entered in both points' lists if absent.
  // Twins are not linked here: see link_twin.
  line_t* line_at(point_t* p0, point_t* p1) {
    if (line_t* found = find(p0, p1)) return found;
    auto* line = new line_t{p0, p1};
    _lines.insert(line, hash_line_key(p0, p1));
    p0->forward_lines.push_back(line);
    p1->backward_lines.push_back(line);
    return line;
  }

  // Links line and its reverse, when the reverse exists.
  void link_twin(line_t* line) {
    line->twin = find(line->p1, line->p0);
    if (line->twin) line->twin->twin = line;
  }

  // Removes and frees an unowned line, unlinking its twin and its points.
  void del(line_t* line) {
    const std::size_t h = hash_line_key(line->p0, line->p1);
    QV_CHECK(_lines.find(h, [&](const line_t& l) { return &l == line; }),
             "topo_line3fr_stock_t::del: line not in stock");
    QV_CHECK(!line->tri, "topo_line3fr_stock_t::del: line still owned by a tri");
    _lines.erase(line, h);
    if (line->twin) line->twin->twin = nullptr;
    QV_CHECK(std::erase(line->p0->forward_lines, line) == 1,
             "topo_line3fr_stock_t::del: p0->forward_lines missing the line");
    QV_CHECK(std::erase(line->p1->backward_lines, line) == 1,
             "topo_line3fr_stock_t::del: p1->backward_lines missing the line");
    delete line;
  }

  template <class Fn>
  void for_each(Fn&& fn) const {
    _lines.for_each(fn);
  }

 private:
  common::pointer_hash_set<line_t> _lines;
};

}  // namespace geom
