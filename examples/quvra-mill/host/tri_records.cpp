#include "host/tri_records.h"

#include <cmath>

namespace mill {

void append_triangle(std::vector<double>& records, const point3_t& a, const point3_t& b, const point3_t& c) {
  const point3_t u{b[0] - a[0], b[1] - a[1], b[2] - a[2]};
  const point3_t v{c[0] - a[0], c[1] - a[1], c[2] - a[2]};
  const point3_t n{u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
  const double len = std::hypot(n[0], n[1], n[2]);
  if (len == 0) return;
  for (const point3_t& p : {a, b, c, point3_t{n[0] / len, n[1] / len, n[2] / len}})
    records.insert(records.end(), p.begin(), p.end());
}

}  // namespace mill
