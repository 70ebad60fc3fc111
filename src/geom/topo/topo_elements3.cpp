#include "geom/topo/topo_elements3.h"

#include <cmath>

namespace geom {

template <class T>
const vec3<T>& topo_line3<T>::get_vec() {
  if (std::isnan(vec.x)) vec = p1->pos() - p0->pos();
  return vec;
}

template <class T>
const vec3<T>& topo_tri3<T>::get_cross() {
  if (std::isnan(cross.x)) cross = geom::cross(lines[0]->get_vec(), lines[1]->get_vec());
  return cross;
}

template <class T>
const vec3<T>& topo_tri3<T>::get_normal() {
  if (std::isnan(normal.x)) {
    const vec3<T>& n = get_cross();
    const T len = std::sqrt(dot(n, n));
    normal = {n.x / len, n.y / len, n.z / len};
  }
  return normal;
}

template struct topo_line3<double>;
template struct topo_tri3<double>;

}  // namespace geom
