#ifndef QUVRA_MECH_APT_T_H
#define QUVRA_MECH_APT_T_H

/* The seven-parameter tool of the APT language: an outline of a bottom
   cone, a corner arc and a flank cone, revolved about the z axis, with the
   tip at the origin. C++ hosts only: the class and its members are exported
   with their C++ names. */

#include <vector>

#include "quvra_export.h"

namespace geom {
struct Stl3d;

/* A point of an outline: height above the tip, then distance from the
   axis. */
template <class T>
struct pair_zr_t {
  T z;
  T r;
};
}  // namespace geom

namespace mech {

class apt_derivative_t;

class QV_API apt_t {
 public:
  double d = 0; /* diameter */
  double r = 0; /* corner radius; 0 for a sharp corner */
  double e = 0; /* distance of the corner arc's centre from the axis */
  double f = 0; /* height of the corner arc's centre */
  double a = 0; /* bottom angle, radians, from the plane normal to the axis */
  double b = 0; /* flank angle, radians, from the axis */
  double h = 0; /* overall height */

  /* Limits of the surfaces below: finer ones are refused with an empty
     soup, since they would hold more triangles than memory. */
  static constexpr int max_sides = 1 << 16;
  static constexpr int max_arc_steps = 1 << 12;
  static constexpr long long max_revolved_tris = 1LL << 24;

  apt_t() = default;
  apt_t(double d, double r, double e, double f, double a, double b, double h);
  apt_t(const apt_t& other) = default;
  apt_t(apt_t&& other) noexcept = default;
  ~apt_t() = default;
  apt_t& operator=(const apt_t& other);
  apt_t& operator=(apt_t&& other) noexcept;

  /* The closed surface of the tool: sides segments round the axis, and
     arc_steps segments per half turn of the corner arc. The soup is owned
     by the result. Triangles face outward; their normals are NaN, to be
     computed from the vertices. An empty soup for sides below 3 or above
     max_sides, arc_steps below 1 or above max_arc_steps, an outline that is
     not finite, or more than max_revolved_tris triangles. */
  geom::Stl3d get_Stl3d(int sides, int arc_steps) const;

  /* The outline from the tip up: a pole or a ring at each point; count
     points at pairs (not kept). A point with r = 0 is a pole. The first
     ring is closed downward by a fan to the axis, the last upward; rings
     are joined by two triangles per side. An empty soup for null pairs, a
     count below 1, sides below 3 or above max_sides, or when the surface
     could hold more than max_revolved_tris triangles. */
  static geom::Stl3d revolve_zrs(const geom::pair_zr_t<double>* pairs, int count, int sides);

 private:
  std::vector<geom::pair_zr_t<double>> _get_zrs(const apt_derivative_t& der, int arc_steps) const;
};

}  // namespace mech

#endif
