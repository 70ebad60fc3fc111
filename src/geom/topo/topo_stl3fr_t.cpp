#include "geom/topo/topo_stl3fr_t.h"

#include <cmath>
#include <unordered_map>

#include "geom/weld_hash.h"

namespace geom {

namespace {

struct xyz_key {
  double x, y, z;
  bool operator==(const xyz_key& o) const { return x == o.x && y == o.y && z == o.z; }
};

struct xyz_hash {
  std::size_t operator()(const xyz_key& k) const { return hash_xyz(k.x, k.y, k.z); }
};

}  // namespace

template <class F>
topo_stl3fr_t<F>::topo_stl3fr_t(const double* records, std::size_t count, double resolution) {
  _reserve(count);
  // Equal doubles always meet; converting each distinct corner once spares
  // the walk for the five or six triangles that share it.
  std::unordered_map<xyz_key, point_t*, xyz_hash> converted;
  converted.reserve(count);
  const auto point_of = [&](const double* c) {
    auto [it, fresh] = converted.try_emplace(xyz_key{c[0], c[1], c[2]}, nullptr);
    if (fresh) {
      vec3<F> pos{from_double(c[0], resolution), from_double(c[1], resolution), from_double(c[2], resolution)};
      it->second = this->point_at(pos);
    }
    return it->second;
  };
  for (std::size_t i = 0; i < count; ++i) {
    const double* r = records + 12 * i;
    _add_tri({point_of(r), point_of(r + 3), point_of(r + 6)});
  }
  _link_twins();
}

template <class F>
topo_stl3fr_t<F>::topo_stl3fr_t(const std::vector<exact_tri_t>& tris) {
  _reserve(tris.size());
  for (exact_tri_t t : tris) _add_tri({this->point_at(t[0]), this->point_at(t[1]), this->point_at(t[2])});
  _link_twins();
}

template <class F>
topo_stl3fr_t<F>::~topo_stl3fr_t() = default;

template <class F>
void topo_stl3fr_t<F>::_reserve(std::size_t tris) {
  this->reserve_points(2 * tris);
  _line_stock.reserve(3 * tris);
  _tri_stock.reserve(tris);
}

template <class F>
void topo_stl3fr_t<F>::_add_tri(const std::array<point_t*, 3>& p) {
  // Collapsed at this resolution: no triangle left.
  if (p[0] == p[1] || p[1] == p[2] || p[2] == p[0]) return;
  _tri_stock.add(p,
                 {_line_stock.line_at(p[0], p[1]), _line_stock.line_at(p[1], p[2]), _line_stock.line_at(p[2], p[0])});
}

template <class F>
void topo_stl3fr_t<F>::_link_twins() {
  _line_stock.for_each([&](line_t* line) {
    if (!line->twin) _line_stock.link_twin(line);
  });
}

template <class F>
std::vector<typename topo_stl3fr_t<F>::exact_tri_t> topo_stl3fr_t<F>::to_exact_tris() const {
  std::vector<exact_tri_t> out;
  out.reserve(_tri_stock.size());
  for (const tri_t* t = _tri_stock.first(); t; t = t->next) out.push_back({t->p[0]->pos, t->p[1]->pos, t->p[2]->pos});
  return out;
}

template <class F>
void topo_stl3fr_t<F>::ensure_integer_normals() {
  std::call_once(_integer_normals, [this] {
    for (tri_t* t = _tri_stock.first(); t; t = t->next) {
      const vec3<F> n = t->cross_product();
      if (t->integer_normal.x.is_nan() && !(n.x.is_zero() && n.y.is_zero() && n.z.is_zero())) t->reset_integer_normal();
    }
  });
}

template <class F>
vec3d topo_stl3fr_t<F>::_unit_normal(tri_t& tri) {
  if (!std::isnan(tri.normal.x)) return tri.normal;
  const vec3<F> n = tri.cross_product();
  if (n.x.is_zero() && n.y.is_zero() && n.z.is_zero()) return tri.normal;
  tri.reset_integer_normal();
  const vec3d d = to_vec3d(tri.integer_normal);
  const double scale = 1 / std::sqrt(d.x * d.x + d.y * d.y + d.z * d.z);
  tri.normal = {d.x * scale, d.y * scale, d.z * scale};
  return tri.normal;
}

template <class F>
void topo_stl3fr_t<F>::get_tris(double* out) {
  for (tri_t* t = _tri_stock.first(); t; t = t->next) {
    for (point_t* p : t->p) {
      const vec3d c = to_vec3d(p->pos);
      *out++ = c.x;
      *out++ = c.y;
      *out++ = c.z;
    }
    const vec3d n = _unit_normal(*t);
    *out++ = n.x;
    *out++ = n.y;
    *out++ = n.z;
  }
}

template <class F>
void topo_stl3fr_t<F>::del_tri(tri_t* tri) {
  const std::array<point_t*, 3> corners = tri->p;
  const std::array<line_t*, 3> lines = tri->l;
  _tri_stock.del(tri);
  for (line_t* l : lines) _line_stock.del(l);
  for (point_t* p : corners)
    if (p->is_unreferenced()) this->del(p);
}

template <class F>
bool topo_stl3fr_t<F>::is_seamless() const {
  bool seamless = true;
  _line_stock.for_each([&](const line_t* line) {
    if (seamless && (!line->twin || !line->twin->tri)) seamless = false;
  });
  return seamless;
}

template <class F>
void topo_stl3fr_t<F>::expand_to_box3d(box3d* box) {
  this->for_each_point([&](point_t* p) { box->expand(to_vec3d(p->pos)); });
}

template <class F>
void topo_stl3fr_t<F>::expand_to_box3d(box3d* box, const mat4d* mat) {
  this->for_each_point([&](point_t* p) { box->expand(mat->apply(to_vec3d(p->pos))); });
}

template class topo_stl3fr_t<fr>;

}  // namespace geom
