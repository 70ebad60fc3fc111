#include "soups.h"

#include <cmath>
#include <numbers>

namespace quvra_test {

namespace {

using point = std::array<double, 3>;

point sub(const point& p, const point& q) { return {p[0] - q[0], p[1] - q[1], p[2] - q[2]}; }

point unit_normal(const point& a, const point& b, const point& c) {
  const point u = sub(b, a), v = sub(c, a);
  point n = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
  const double len = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
  for (double& x : n) x /= len;
  return n;
}

geom::stl_tri_t make_tri(const point& a, const point& b, const point& c) { return {a, b, c, unit_normal(a, b, c)}; }

// Two triangles of the quad a b c d, counter-clockwise seen from outside.
void add_quad(std::vector<geom::stl_tri_t>& out, const point& a, const point& b, const point& c, const point& d) {
  out.push_back(make_tri(a, b, c));
  out.push_back(make_tri(a, c, d));
}

point on_sphere(double radius, int ring, int rings, int sector, int sectors) {
  const double theta = std::numbers::pi * ring / rings;
  const double phi = 2 * std::numbers::pi * sector / sectors;
  return {radius * std::sin(theta) * std::cos(phi), radius * std::sin(theta) * std::sin(phi), radius * std::cos(theta)};
}

point on_torus(double r_major, double r_minor, int i, int rings, int j, int sides) {
  const double u = 2 * std::numbers::pi * (i % rings) / rings;
  const double v = 2 * std::numbers::pi * (j % sides) / sides;
  const double r = r_major + r_minor * std::cos(v);
  return {r * std::cos(u), r * std::sin(u), r_minor * std::sin(v)};
}

}  // namespace

std::vector<geom::stl_tri_t> box_soup(double x0, double y0, double z0, double x1, double y1, double z1) {
  std::vector<geom::stl_tri_t> out;
  const point p000{x0, y0, z0}, p100{x1, y0, z0}, p010{x0, y1, z0}, p110{x1, y1, z0};
  const point p001{x0, y0, z1}, p101{x1, y0, z1}, p011{x0, y1, z1}, p111{x1, y1, z1};
  add_quad(out, p000, p010, p110, p100);  // bottom, facing -z
  add_quad(out, p001, p101, p111, p011);  // top
  add_quad(out, p000, p100, p101, p001);  // front, -y
  add_quad(out, p010, p011, p111, p110);  // back
  add_quad(out, p000, p001, p011, p010);  // left, -x
  add_quad(out, p100, p110, p111, p101);  // right
  return out;
}

std::vector<geom::stl_tri_t> cylinder_soup(double cx, double cy, double radius, double z0, double z1, int sides) {
  std::vector<geom::stl_tri_t> out;
  const point bottom{cx, cy, z0}, top{cx, cy, z1};
  for (int i = 0; i < sides; ++i) {
    const double a0 = 2 * std::numbers::pi * i / sides, a1 = 2 * std::numbers::pi * (i + 1) / sides;
    const point b0{cx + radius * std::cos(a0), cy + radius * std::sin(a0), z0};
    const point b1{cx + radius * std::cos(a1), cy + radius * std::sin(a1), z0};
    const point t0{b0[0], b0[1], z1}, t1{b1[0], b1[1], z1};
    add_quad(out, b0, b1, t1, t0);
    out.push_back(make_tri(bottom, b1, b0));
    out.push_back(make_tri(top, t0, t1));
  }
  return out;
}

std::vector<geom::stl_tri_t> gable_soup(double x0, double y0, double z0, double x1, double y1, double z_eave,
                                        double z_ridge) {
  std::vector<geom::stl_tri_t> out;
  const double xm = 0.5 * (x0 + x1);
  const point p000{x0, y0, z0}, p100{x1, y0, z0}, p010{x0, y1, z0}, p110{x1, y1, z0};
  const point e000{x0, y0, z_eave}, e100{x1, y0, z_eave}, e010{x0, y1, z_eave}, e110{x1, y1, z_eave};
  const point r0{xm, y0, z_ridge}, r1{xm, y1, z_ridge};
  add_quad(out, p000, p010, p110, p100);  // bottom
  add_quad(out, p000, e000, e010, p010);  // left
  add_quad(out, p100, p110, e110, e100);  // right
  add_quad(out, e000, r0, r1, e010);      // roof, left slope
  add_quad(out, e100, e110, r1, r0);      // roof, right slope
  for (const auto& [a, b] : {std::pair{p100, e100}, {e100, r0}, {r0, e000}}) out.push_back(make_tri(p000, a, b));
  for (const auto& [a, b] : {std::pair{e010, r1}, {r1, e110}, {e110, p110}}) out.push_back(make_tri(p010, a, b));
  return out;
}

std::vector<geom::stl_tri_t> sphere_soup(double radius, int rings, int sectors) {
  std::vector<geom::stl_tri_t> out;
  for (int r = 0; r < rings; ++r) {
    for (int s = 0; s < sectors; ++s) {
      const point a = on_sphere(radius, r, rings, s, sectors);
      const point b = on_sphere(radius, r + 1, rings, s, sectors);
      const point c = on_sphere(radius, r + 1, rings, s + 1, sectors);
      const point d = on_sphere(radius, r, rings, s + 1, sectors);
      // The caps collapse one edge of the quad: keep only the real triangle.
      if (r != 0) out.push_back(make_tri(a, b, d));
      if (r != rings - 1) out.push_back(make_tri(b, c, d));
    }
  }
  return out;
}

std::vector<geom::stl_tri_t> step_block_soup(double x0, double y0, double z0, double x1, double y1, double z1,
                                             double xs, double zs) {
  // The L profile in (x, z), counter-clockwise seen from -y.
  const std::array<std::array<double, 2>, 6> profile = {{{x0, z0}, {x1, z0}, {x1, zs}, {xs, zs}, {xs, z1}, {x0, z1}}};
  const auto at = [](const std::array<double, 2>& p, double y) { return point{p[0], y, p[1]}; };
  std::vector<geom::stl_tri_t> out;
  // The two L faces as two rectangles each: below zs, and the upright part.
  const auto l_face = [&](double y, bool front) {
    const point a = {x0, y, z0}, b = {x1, y, z0}, c = {x1, y, zs}, d = {x0, y, zs};
    const point e = {xs, y, zs}, f = {xs, y, z1}, g = {x0, y, z1};
    if (front) {
      add_quad(out, a, b, c, d);
      add_quad(out, d, e, f, g);
    } else {
      add_quad(out, a, d, c, b);
      add_quad(out, d, g, f, e);
    }
  };
  l_face(y0, true);
  l_face(y1, false);
  for (std::size_t i = 0; i < profile.size(); ++i) {
    const auto& p = profile[i];
    const auto& q = profile[(i + 1) % profile.size()];
    add_quad(out, at(p, y0), at(p, y1), at(q, y1), at(q, y0));
  }
  return out;
}

std::vector<geom::stl_tri_t> torus_soup(double r_major, double r_minor, int rings, int sides) {
  std::vector<geom::stl_tri_t> out;
  for (int i = 0; i < rings; ++i)
    for (int j = 0; j < sides; ++j) {
      const point a = on_torus(r_major, r_minor, i, rings, j, sides);
      const point b = on_torus(r_major, r_minor, i + 1, rings, j, sides);
      const point c = on_torus(r_major, r_minor, i + 1, rings, j + 1, sides);
      const point d = on_torus(r_major, r_minor, i, rings, j + 1, sides);
      out.push_back(make_tri(a, b, c));
      out.push_back(make_tri(a, c, d));
    }
  return out;
}

}  // namespace quvra_test
