#include "mech/apt_derivative_t.h"

#include <cmath>

#include "mech/apt_t.h"

namespace mech {

// The bottom's outward normal in (z, r) is (-cos a, sin a): straight down for
// a flat bottom. The flank's is (-sin b, cos b): straight out for a
// cylinder. The circle of the corner touches each cone where its radius
// runs along that cone's normal, so the outline turns there without a kink.
apt_derivative_t::apt_derivative_t(const apt_t& apt) {
  const double sa = std::sin(apt.a), ca = std::cos(apt.a);
  const double sb = std::sin(apt.b), cb = std::cos(apt.b);
  v[0] = sa;
  v[1] = ca;
  v[2] = sb;
  v[3] = cb;
  v[4] = sa / ca;
  v[5] = sb / cb;
  v[6] = apt.f - apt.r * ca;
  v[7] = apt.e + apt.r * sa;
  v[8] = apt.f - apt.r * sb;
  v[9] = apt.e + apt.r * cb;
}

}  // namespace mech
