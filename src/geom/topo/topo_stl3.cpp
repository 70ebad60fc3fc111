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
  // A closed mesh has about half as many points as triangles.
  _point_index.reserve(count / 2);
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
  const auto same = [&](const point_t& p) { return p.x == x && p.y == y && p.z == z; };
  // Neighbouring triangles of a soup share corners: a small table of recent
  // points answers most lookups from cache.
  point_t*& recent = _recent_points[h % _recent_points.size()];
  if (recent && same(*recent)) return recent;
  point_t* found = _point_index.find(h, same);
  if (!found) {
    found = &_points.emplace_back(point_t{x, y, z, {}, {}, {}});
    _point_index.insert(found, h);
  }
  recent = found;
  return found;
}

template <class T>
typename topo_stl3<T>::line_t* topo_stl3<T>::_line_from(point_t* p0, point_t* p1) {
  for (line_t* l : p0->forward_lines)
    if (l->p1 == p1) return l;
  return nullptr;
}

template <class T>
typename topo_stl3<T>::line_t* topo_stl3<T>::_line_between(point_t* p0, point_t* p1) {
  if (line_t* found = _line_from(p0, p1)) return found;
  line_t* line = &_lines.emplace_back(line_t{p0, p1});
  p0->forward_lines.push_back(line);
  p1->backward_lines.push_back(line);
  line->twin = _line_from(p1, p0);
  if (line->twin) line->twin->twin = line;
  return line;
}

template <class T>
void topo_stl3<T>::_add_tri(point_t* a, point_t* b, point_t* c) {
  // The same triangle, whichever corner it starts from, would own one of
  // the lines already.
  const std::array<point_t*, 3> key = rotated_key(a, b, c);
  if (line_t* ab = _line_from(a, b); ab && ab->tri && rotated_key(ab->tri->a, ab->tri->b, ab->tri->c) == key) return;
  tri_t* tri = &_tris.emplace_back(tri_t{a, b, c, {}});
  tri->lines = {_line_between(a, b), _line_between(b, c), _line_between(c, a)};
  for (point_t* p : {a, b, c}) p->tris.push_back(tri);
  for (line_t* l : tri->lines) l->tri = tri;
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
  if (!std::isnan(line.bend) || !line.twin || !line.tri || !line.twin->tri) return line.bend;
  const vec3<T>& n1 = line.tri->get_cross();
  const vec3<T>& n2 = line.twin->tri->get_cross();
  const T d = dot(n1, n2);
  line.bend = d * d / (dot(n1, n1) * dot(n2, n2));
  line.twin->bend = line.bend;
  return line.bend;
}

template <class T>
void topo_stl3<T>::get_tris(double* out) {
  for (tri_t& t : _tris) {
    const vec3<T>& n = t.get_normal();
    const T rec[12] = {t.a->x, t.a->y, t.a->z, t.b->x, t.b->y, t.b->z, t.c->x, t.c->y, t.c->z, n.x, n.y, n.z};
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
