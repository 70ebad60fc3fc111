#include "cbtr/tool/exact_pose.h"

namespace cbtr {

namespace {

constexpr double rotation_grid = 0.0001;

bool on_rotation_grid(int i) { return i < 10 && i != 3 && i != 7; }

// m * x added to sum. A pose is mostly zeros and ones; skipping those
// products leaves the value alone and spares most of the big-integer work.
void add_term(geom::fr& sum, const geom::fr& m, const geom::fr& x) {
  if (m.is_zero()) return;
  if (geom::eq_int(m, 1))
    sum += x;
  else
    sum += m * x;
}

geom::vec3fr apply_block(const exact_pose_t& pose, const geom::vec3fr& v, bool translate) {
  const auto& m = pose.m;
  geom::vec3fr out =
      translate ? translation_of(pose) : geom::vec3fr{geom::fr::zero(), geom::fr::zero(), geom::fr::zero()};
  geom::fr* rows[3] = {&out.x, &out.y, &out.z};
  for (int r = 0; r < 3; ++r) {
    add_term(*rows[r], m[r], v.x);
    add_term(*rows[r], m[4 + r], v.y);
    add_term(*rows[r], m[8 + r], v.z);
    rows[r]->pack();
  }
  return out;
}

}  // namespace

exact_pose_t to_exact_pose(const geom::mat4d& pose, double resolution) {
  exact_pose_t out;
  for (int i = 0; i < 16; ++i)
    out.m[i] = geom::from_double(pose.m[i], on_rotation_grid(i) ? rotation_grid : resolution);
  return out;
}

geom::vec3fr transform(const exact_pose_t& pose, const geom::vec3fr& p) { return apply_block(pose, p, true); }

geom::vec3fr rotate(const exact_pose_t& pose, const geom::vec3fr& v) { return apply_block(pose, v, false); }

bool turns(const exact_pose_t& pose) {
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 3; ++c)
      if (!geom::eq_int(pose.m[4 * c + r], r == c ? 1 : 0)) return true;
  return false;
}

geom::vec3fr translation_of(const exact_pose_t& pose) { return {pose.m[12], pose.m[13], pose.m[14]}; }

geom::vec3fr snap(const geom::vec3d& p, double resolution) {
  return {geom::from_double(p.x, resolution), geom::from_double(p.y, resolution), geom::from_double(p.z, resolution)};
}

}  // namespace cbtr
