#include "milling/edge_frames.h"

#include <cmath>
#include <numbers>

namespace mech {

namespace {

constexpr double pi = std::numbers::pi;

geom::vec3d flat(const geom::vec3d& v) { return {v.x, v.y, 0}; }

// v turned about the unit axis a by angle (Rodrigues).
geom::vec3d rotate_about(const geom::vec3d& v, const geom::vec3d& a, double angle) {
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  return v * c + geom::cross(a, v) * s + a * (geom::dot(a, v) * (1 - c));
}

}  // namespace

namespace {

geom::vec3d turn_z(const geom::vec3d& v, double c, double s) { return {v.x * c - v.y * s, v.x * s + v.y * c, v.z}; }

}  // namespace

geom::vec3d rotate_z(const geom::vec3d& v, double angle) { return turn_z(v, std::cos(angle), std::sin(angle)); }

geom::vec3d on_edge(const edge_point_t& p) { return {p.r * std::cos(p.theta), p.r * std::sin(p.theta), p.z}; }

edge_frame_t side_frame(const edge_point_t& lo, const edge_point_t& up, bool flank, double flank_angle) {
  const geom::vec3d l = on_edge(lo);
  const geom::vec3d u = on_edge(up);
  edge_frame_t f{};
  f.t = unit(u - l);
  const geom::vec3d n = unit(flat((l + u) * 0.5));
  const geom::vec3d w = rotate_z(n, pi - (lo.rake + up.rake) / 2);
  f.b = unit(geom::cross(f.t, w));
  f.c = geom::cross(f.b, f.t);
  if (flank) f.s = unit(geom::cross(-f.t, rotate_z(n, flank_angle + pi / 2)));
  return f;
}

edge_frame_t bottom_frame(const edge_point_t& lo, const edge_point_t& up, double rake, bool flank, double flank_angle) {
  const geom::vec3d axis{0, 0, 1};
  edge_frame_t f{};
  f.t = unit(on_edge(up) - on_edge(lo));
  const geom::vec3d w = rotate_about(axis, unit(flat(f.t)), -rake);
  f.b = unit(geom::cross(f.t, w));
  f.c = geom::cross(f.b, f.t);
  if (flank) {
    const geom::vec3d u = -f.t;
    f.s = unit(geom::cross(u, rotate_about(axis, unit(flat(u)), flank_angle - pi / 2)));
  }
  return f;
}

edge_frame_t rotate_z(const edge_frame_t& f, double c, double s) {
  return {turn_z(f.t, c, s), turn_z(f.c, c, s), turn_z(f.b, c, s), turn_z(f.s, c, s)};
}

}  // namespace mech
