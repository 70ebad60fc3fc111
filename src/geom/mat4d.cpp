#include "geom/mat4d.h"

namespace geom {

mat4d operator*(const mat4d& a, const mat4d& b) {
  // Applying a, then b, to a column vector is b's matrix times a's.
  mat4d r{};
  for (int col = 0; col < 4; ++col)
    for (int row = 0; row < 4; ++row) {
      double s = 0;
      for (int k = 0; k < 4; ++k) s += b.m[k * 4 + row] * a.m[col * 4 + k];
      r.m[col * 4 + row] = s;
    }
  return r;
}

}  // namespace geom
