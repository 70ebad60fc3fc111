#ifndef QUVRA_MECH_APT_DERIVATIVE_T_H
#define QUVRA_MECH_APT_DERIVATIVE_T_H

/* Values derived from the seven APT tool parameters: where the bottom cone,
   the corner arc and the flank cone of the outline meet, each joint
   tangent-continuous. Outline points are (z, r): height above the tip and
   distance from the axis. C++ hosts only. */

#include "quvra_export.h"

namespace mech {

class apt_t;

class QV_API apt_derivative_t {
 public:
  /* A pure function of the parameters. The joints are where the arc's
     circle touches the two cones: the bottom at the normal that the bottom
     angle gives, the flank at the normal that the flank angle gives. With a
     corner radius of 0 both joints are the arc's centre. */
  explicit apt_derivative_t(const apt_t& apt);

  /* By position:
       0, 1  sine and cosine of the bottom angle
       2, 3  sine and cosine of the flank angle
       4     slope of the bottom cone: change of height per unit of radius
       5     slope of the flank: change of radius per unit of height
       6, 7  z, r where the bottom ends and the arc begins
       8, 9  z, r where the arc ends and the flank begins */
  double v[10];
};

}  // namespace mech

#endif
