#ifndef QUVRA_CBTR_STICK_CONVEX_H
#define QUVRA_CBTR_STICK_CONVEX_H

/* A rotating tool at rest, kept analytic: a convex solid of revolution about
   its own z axis, given as profile bands from the tip (lowest z) to the
   shank. Neighbouring bands meet at a common height; the body is closed by
   flat ends at the first band's z0 and the last band's z1.

   kind  shape          p[0] p[1] p[2]            p[3]           p[4]          p[5]       p[6]
   1     sphere band    z0   z1   centre height   radius
   2     torus band     z0   z1   major radius    minor radius   centre height radius@z0  radius@z1
   3     cone band      z0   z1   r0              r1
   4     cylinder band  z0   z1   radius

   The host fills the list; the library only reads it during a call. */

#include <stdint.h>

#include <vector>

namespace cbtr {

enum stick_segment_kind : int32_t {
  stick_sphere = 1,
  stick_torus = 2,
  stick_cone = 3,
  stick_cylinder = 4,
};

struct stick_segment_t {
  int32_t kind;
  double p[7];
};
static_assert(sizeof(stick_segment_t) == 64, "profile segments are 64-byte records");

struct stick_convex_t {
  std::vector<stick_segment_t> segments;
};

}  // namespace cbtr

typedef cbtr::stick_convex_t stick_convex_t;

#endif
