#include "cbtr/tool/derivative_tris.h"

#include <cmath>
#include <limits>

#include "cbtr/tool/pose_rotation.h"

namespace cbtr {

namespace {

using geom::vec3d;

vec3d sub(const vec3d& a, const vec3d& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
vec3d mid(const vec3d& a, const vec3d& b) { return {(a.x + b.x) / 2, (a.y + b.y) / 2, (a.z + b.z) / 2}; }
vec3d abs_of(const vec3d& v) { return {std::fabs(v.x), std::fabs(v.y), std::fabs(v.z)}; }

// A zero-length cross product comes out NaN, as a triangle without area
// has no normal.
vec3d unit_cross(const vec3d& u, const vec3d& v) {
  const vec3d n = {u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x};
  const double length = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
  if (length == 0)
    return {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::quiet_NaN(),
            std::numeric_limits<double>::quiet_NaN()};
  return {n.x / length, n.y / length, n.z / length};
}

void put(double* out, const vec3d& v) {
  out[0] = v.x;
  out[1] = v.y;
  out[2] = v.z;
}

geom::derivative_cached_tri3d_t record(const vec3d& p0, const vec3d& p1, const vec3d& p2, const vec3d& normal) {
  geom::derivative_cached_tri3d_t t{};
  put(t.p0, p0);
  put(t.p1, p1);
  put(t.p2, p2);
  put(t.normal, normal);
  geom::box3d box;
  for (const vec3d& p : {p0, p1, p2}) box.expand(p);
  put(t.box_min, {box.v[0], box.v[1], box.v[2]});
  put(t.box_max, {box.v[3], box.v[4], box.v[5]});
  put(t.e0, sub(p1, p0));
  put(t.e1, sub(p2, p1));
  put(t.e2, sub(p0, p2));
  const vec3d m0 = mid(p0, p1), m1 = mid(p1, p2), m2 = mid(p2, p0);
  put(t.m0, m0);
  put(t.m1, m1);
  put(t.m2, m2);
  put(t.h0, abs_of(sub(p0, m0)));
  put(t.h1, abs_of(sub(p1, m1)));
  put(t.h2, abs_of(sub(p2, m2)));
  return t;
}

vec3d as_vec(const std::array<double, 3>& a) { return {a[0], a[1], a[2]}; }

}  // namespace

derivative_cached_tri3d_vector derivative_tris_of(geom::stl3d_t& soup, const geom::mat4d& pose) {
  derivative_cached_tri3d_vector out;
  out.reserve(soup.tris.size());
  for (geom::stl_tri_t& t : soup.tris) {
    const vec3d a = as_vec(t.a), b = as_vec(t.b), c = as_vec(t.c);
    if (std::isnan(t.normal[0])) {
      const vec3d n = unit_cross(sub(b, a), sub(c, a));
      t.normal = {n.x, n.y, n.z};
    }
    out.push_back(record(pose.apply(a), pose.apply(b), pose.apply(c), rotated(pose, as_vec(t.normal))));
  }
  return out;
}

derivative_cached_tri3d_vector derivative_tris_of(geom::topo_stl3d& mesh, const geom::mat4d& pose) {
  derivative_cached_tri3d_vector out;
  out.reserve(mesh.tri_count());
  for (const geom::topo_tri3<double>& t : mesh.tris()) {
    const vec3d p0 = pose.apply(t.a->pos()), p1 = pose.apply(t.b->pos()), p2 = pose.apply(t.c->pos());
    out.push_back(record(p0, p1, p2, unit_cross(sub(p1, p0), sub(p2, p1))));
  }
  return out;
}

}  // namespace cbtr
