#pragma once

// Three coordinates of one number type: vec3<fr> is the exact point and
// direction, vec3<double> the floating one. The operators never pack: exact
// coordinates grow until a caller packs them where needs_pack() says so.

namespace geom {

template <class T>
struct vec3 {
  T x;
  T y;
  T z;
};

using vec3d = vec3<double>;

template <class T>
vec3<T> operator+(const vec3<T>& a, const vec3<T>& b) {
  return {a.x + b.x, a.y + b.y, a.z + b.z};
}

template <class T>
vec3<T> operator-(const vec3<T>& a, const vec3<T>& b) {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}

template <class T>
vec3<T> operator-(const vec3<T>& a) {
  return {-a.x, -a.y, -a.z};
}

template <class T>
vec3<T> operator*(const vec3<T>& a, const T& s) {
  return {a.x * s, a.y * s, a.z * s};
}

// Summed left to right.
template <class T>
T dot(const vec3<T>& a, const vec3<T>& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}

template <class T>
vec3<T> cross(const vec3<T>& a, const vec3<T>& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

// x, then y, then z, stopping at the first difference.
template <class T>
bool operator==(const vec3<T>& a, const vec3<T>& b) {
  return a.x == b.x && a.y == b.y && a.z == b.z;
}

}  // namespace geom
