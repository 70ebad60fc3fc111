#pragma once

// Two in-plane coordinates (u, v), as the carve projects a face. With the
// counter-clockwise convention, cross(b - a, c - b) > 0 means that a, b, c
// turn left.

namespace geom {

template <class T>
struct vec2 {
  T x;
  T y;
};

template <class T>
vec2<T> operator+(const vec2<T>& a, const vec2<T>& b) {
  return {a.x + b.x, a.y + b.y};
}

template <class T>
vec2<T> operator-(const vec2<T>& a, const vec2<T>& b) {
  return {a.x - b.x, a.y - b.y};
}

template <class T>
vec2<T> operator*(const vec2<T>& a, const T& s) {
  return {a.x * s, a.y * s};
}

template <class T>
T dot(const vec2<T>& a, const vec2<T>& b) {
  return a.x * b.x + a.y * b.y;
}

// The scalar cross product: positive when b lies counter-clockwise of a.
template <class T>
T cross(const vec2<T>& a, const vec2<T>& b) {
  return a.x * b.y - a.y * b.x;
}

template <class T>
bool operator==(const vec2<T>& a, const vec2<T>& b) {
  return a.x == b.x && a.y == b.y;
}

}  // namespace geom
