#pragma once

// Points, directed lines and triangles of the welded floating mesh, linked
// to each other. Derived values (edge vector, bend, cross product, unit
// normal) are computed on first demand and cached in place; a NaN first
// component means "not computed yet".

#include <array>
#include <boost/container/small_vector.hpp>
#include <limits>

#include "geom/vec3.h"

namespace geom {

template <class T>
struct topo_line3;
template <class T>
struct topo_tri3;

inline constexpr double not_computed = std::numeric_limits<double>::quiet_NaN();

// Twelve is the usual valence, so most points never reallocate.
template <class E>
using valence_list = boost::container::small_vector<E*, 12>;

template <class T>
struct topo_point3 {
  T x, y, z;
  valence_list<topo_line3<T>> forward_lines;
  valence_list<topo_line3<T>> backward_lines;
  valence_list<topo_tri3<T>> tris;

  vec3<T> pos() const { return {x, y, z}; }
};

template <class T>
struct topo_line3 {
  topo_point3<T>* p0;
  topo_point3<T>* p1;
  // The triangle on its left, the last one made if the soup repeats the
  // line.
  topo_tri3<T>* tri = nullptr;
  topo_line3* twin = nullptr;
  vec3<T> vec = {not_computed, not_computed, not_computed};
  // Squared cosine between the normals of the triangles on both sides; stays
  // NaN on an open border.
  T bend = not_computed;

  const vec3<T>& get_vec();
};

template <class T>
struct topo_tri3 {
  topo_point3<T>* a;
  topo_point3<T>* b;
  topo_point3<T>* c;
  std::array<topo_line3<T>*, 3> lines;  // a->b, b->c, c->a
  vec3<T> cross = {not_computed, not_computed, not_computed};
  vec3<T> normal = {not_computed, not_computed, not_computed};
  std::array<vec3<T>, 3> vertex_normals = {vec3<T>{not_computed, not_computed, not_computed},
                                           vec3<T>{not_computed, not_computed, not_computed},
                                           vec3<T>{not_computed, not_computed, not_computed}};

  const vec3<T>& get_cross();
  // The unit normal, from the vertices: the source file's normal is not used.
  const vec3<T>& get_normal();
  std::array<topo_point3<T>*, 3> corners() const { return {a, b, c}; }
};

extern template struct topo_line3<double>;
extern template struct topo_tri3<double>;

}  // namespace geom
