#include "geom/topo/topo_stl3.h"

#include <algorithm>
#include <cmath>

#include "geom/weld_hash.h"

namespace geom {

namespace {

// A triangle is the same whichever corner its points start from: the key
// starts at the point with the lowest address, keeping the cyclic order.
template <class P>
std::array<P*, 3> rotated_key(P* a, P* b, P* c) {
  if (b < a && b < c) return {b, c, a};
  if (c < a && c < b) return {c, a, b};
  return {a, b, c};
}

template <class P>
std::size_t hash_key(const std::array<P*, 3>& k) {
  return hash_point_pair(k[0], k[1]) * 31 + reinterpret_cast<std::uintptr_t>(k[2]);
}

}  // namespace

template <class T>
topo_stl3<T>::topo_stl3(const double* records, std::size_t count) {
  _build(records, count);
}

template <class T>
topo_stl3<T>::topo_stl3(const stl3d_t& soup)
    : topo_stl3(reinterpret_cast<const double*>(soup.tris.data()), soup.tris.size()) {}

template <class T>
void topo_stl3<T>::_build(const double* records, std::size_t count) {
  _point_index.reserve(2 * count);
  _line_index.reserve(3 * count);
  _tri_index.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const double* r = records + 12 * i;
    point_t* a = _point_at(r[0], r[1], r[2]);
    point_t* b = _point_at(r[3], r[4], r[5]);
    point_t* c = _point_at(r[6], r[7], r[8]);
    if (a == b || b == c || c == a) continue;
    _add_tri(a, b, c);
  }
}

template <class T>
typename topo_stl3<T>::point_t* topo_stl3<T>::_point_at(T x, T y, T z) {
  const std::size_t h = hash_xyz(x, y, z);
  point_t* found = _point_index.find(h, [&](const point_t& p) { return p.x == x && p.y == y && p.z == z; });
  if (found) return found;
  point_t* p = &_points.emplace_back(point_t{x, y, z, {}, {}, {}});
  _point_index.insert(p, h);
  return p;
}

template <class T>
typename topo_stl3<T>::line_t* topo_stl3<T>::_line_between(point_t* p0, point_t* p1) {
  const std::size_t h = hash_point_pair(p0, p1);
  line_t* found = _line_index.find(h, [&](const line_t& l) { return l.p0 == p0 && l.p1 == p1; });
  if (found) return found;
  line_t* line = &_lines.emplace_back(line_t{p0, p1, {}});
  _line_index.insert(line, h);
  p0->forward_lines.push_back(line);
  p1->backward_lines.push_back(line);
  line->twin = _line_index.find(hash_point_pair(p1, p0),
                                [&](const line_t& l) { return l.p0 == p1 && l.p1 == p0; });
  if (line->twin) line->twin->twin = line;
  return line;
}

template <class T>
void topo_stl3<T>::_add_tri(point_t* a, point_t* b, point_t* c) {
  const std::array<point_t*, 3> key = rotated_key(a, b, c);
  const std::size_t h = hash_key(key);
  const auto same = [&](const tri_t& t) { return rotated_key(t.a, t.b, t.c) == key; };
  if (_tri_index.find(h, same)) return;
  tri_t* tri = &_tris.emplace_back(tri_t{a, b, c, {}});
  tri->lines = {_line_between(a, b), _line_between(b, c), _line_between(c, a)};
  _tri_index.insert(tri, h);
  for (point_t* p : {a, b, c}) p->tris.push_back(tri);
  for (line_t* l : tri->lines) l->tris.push_back(tri);
}

template <class T>
void topo_stl3<T>::set_round_cos(T c) {
  _round_cos = c;
  _round_cos_sq = c * c;
}

template <class T>
const std::array<vec3<T>, 3>& topo_stl3<T>::vertex_normals(tri_t& tri) {
  if (!std::isnan(tri.vertex_normals[0].x)) return tri.vertex_normals;
  const vec3<T> own = tri.get_normal();
  const std::array<point_t*, 3> corners = tri.corners();
  for (int k = 0; k < 3; ++k) {
    vec3<T> sum = own;
    T n = 1;
    for (tri_t* other : corners[k]->tris) {
      if (other == &tri) continue;
      const vec3<T>& on = other->get_normal();
      if (dot(on, own) > _round_cos) {
        sum = sum + on;
        n += 1;
      }
    }
    sum = {sum.x / n, sum.y / n, sum.z / n};
    const T len = std::sqrt(dot(sum, sum));
    tri.vertex_normals[k] = {sum.x / len, sum.y / len, sum.z / len};
  }
  return tri.vertex_normals;
}

template <class T>
T topo_stl3<T>::bend(line_t& line) {
  if (!std::isnan(line.bend) || !line.twin || line.tris.empty() || line.twin->tris.empty())
    return line.bend;
  const vec3<T>& n1 = line.tris.front()->get_cross();
  const vec3<T>& n2 = line.twin->tris.front()->get_cross();
  const T d = dot(n1, n2);
  line.bend = d * d / (dot(n1, n1) * dot(n2, n2));
  line.twin->bend = line.bend;
  return line.bend;
}

template <class T>
void topo_stl3<T>::get_tris(double* out) {
  for (tri_t& t : _tris) {
    const vec3<T>& n = t.get_normal();
    const T rec[12] = {t.a->x, t.a->y, t.a->z, t.b->x, t.b->y, t.b->z,
                       t.c->x, t.c->y, t.c->z, n.x,    n.y,    n.z};
    out = std::copy(rec, rec + 12, out);
  }
}

template <class T>
const box3d& topo_stl3<T>::box() {
  if (!_box) {
    auto b = std::make_unique<box3d>();
    for (const point_t& p : _points) b->expand(p.pos());
    _box = std::move(b);
  }
  return *_box;
}

template <class T>
void topo_stl3<T>::expand_to_box3d(box3d* out) {
  out->expand(box());
}

template <class T>
void topo_stl3<T>::expand_to_box3d(box3d* out, const mat4d* mat) {
  for (const point_t& p : _points) out->expand(mat->apply(p.pos()));
}

template class topo_stl3<double>;

}  // namespace geom
