#include "host/mesh_volume.h"

namespace mill {

double enclosed_volume(const std::vector<double>& tris) {
  double six_v = 0;
  for (std::size_t i = 0; i + 12 <= tris.size(); i += 12) {
    const double* a = &tris[i];
    const double* b = a + 3;
    const double* c = a + 6;
    six_v +=
        a[0] * (b[1] * c[2] - b[2] * c[1]) - a[1] * (b[0] * c[2] - b[2] * c[0]) + a[2] * (b[0] * c[1] - b[1] * c[0]);
  }
  return six_v / 6;
}

}  // namespace mill
