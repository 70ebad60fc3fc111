#include "disp/pose_math.h"

#include <limits>

namespace disp {

geom::mat4d uniform_scale(double s) { return {{s, 0, 0, 0, 0, s, 0, 0, 0, 0, s, 0, 0, 0, 0, 1}}; }

geom::mat4d translation(double x, double y, double z) { return {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1}}; }

double det3(const geom::mat4d& pose) {
  const auto& m = pose.m;
  return m[0] * (m[5] * m[10] - m[6] * m[9]) - m[4] * (m[1] * m[10] - m[2] * m[9]) + m[8] * (m[1] * m[6] - m[2] * m[5]);
}

geom::mat4d inverse(const geom::mat4d& pose) {
  // Cofactor expansion by 2x2 minors of the first two and last two rows.
  const auto& m = pose.m;
  const double s0 = m[0] * m[5] - m[4] * m[1], s1 = m[0] * m[9] - m[8] * m[1];
  const double s2 = m[0] * m[13] - m[12] * m[1], s3 = m[4] * m[9] - m[8] * m[5];
  const double s4 = m[4] * m[13] - m[12] * m[5], s5 = m[8] * m[13] - m[12] * m[9];
  const double c5 = m[10] * m[15] - m[14] * m[11], c4 = m[6] * m[15] - m[14] * m[7];
  const double c3 = m[6] * m[11] - m[10] * m[7], c2 = m[2] * m[15] - m[14] * m[3];
  const double c1 = m[2] * m[11] - m[10] * m[3], c0 = m[2] * m[7] - m[6] * m[3];
  const double det = s0 * c5 - s1 * c4 + s2 * c3 + s3 * c2 - s4 * c1 + s5 * c0;
  if (det == 0.0) {
    geom::mat4d nan;
    nan.m.fill(std::numeric_limits<double>::quiet_NaN());
    return nan;
  }
  const double k = 1.0 / det;
  return {{(m[5] * c5 - m[9] * c4 + m[13] * c3) * k, (-m[1] * c5 + m[9] * c2 - m[13] * c1) * k,
           (m[1] * c4 - m[5] * c2 + m[13] * c0) * k, (-m[1] * c3 + m[5] * c1 - m[9] * c0) * k,
           (-m[4] * c5 + m[8] * c4 - m[12] * c3) * k, (m[0] * c5 - m[8] * c2 + m[12] * c1) * k,
           (-m[0] * c4 + m[4] * c2 - m[12] * c0) * k, (m[0] * c3 - m[4] * c1 + m[8] * c0) * k,
           (m[7] * s5 - m[11] * s4 + m[15] * s3) * k, (-m[3] * s5 + m[11] * s2 - m[15] * s1) * k,
           (m[3] * s4 - m[7] * s2 + m[15] * s0) * k, (-m[3] * s3 + m[7] * s1 - m[11] * s0) * k,
           (-m[6] * s5 + m[10] * s4 - m[14] * s3) * k, (m[2] * s5 - m[10] * s2 + m[14] * s1) * k,
           (-m[2] * s4 + m[6] * s2 - m[14] * s0) * k, (m[2] * s3 - m[6] * s1 + m[10] * s0) * k}};
}

geom::vec3d apply_projective(const geom::mat4d& pose, const geom::vec3d& p) {
  const auto& m = pose.m;
  const double w = m[3] * p.x + m[7] * p.y + m[11] * p.z + m[15];
  const geom::vec3d q = pose.apply(p);
  return {q.x / w, q.y / w, q.z / w};
}

}  // namespace disp
