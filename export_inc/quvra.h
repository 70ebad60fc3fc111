#ifndef QUVRA_H
#define QUVRA_H

/* Every family of the flat boundary. */

#include "cbtr/cbtr_cache.h"
#include "cbtr/collision.h"
#include "cbtr/cube_tree.h"
#include "common/debug_util.h"
#include "common/failure.h"
#include "common/log.h"
#include "common/progress_monitor.h"
#include "common/stop.h"
#include "disp/context.h"
#include "disp/font.h"
#include "disp/gl_loader.h"
#include "geom/fraction_unlimited.h"
#include "geom/topo_stl3wfr.h"
#include "milling/milling_engagement.h"
#include "milling/milling_physics.h"

#ifdef __cplusplus
#include "cbtr/cached_tris.h"
#include "cbtr/geom_compare.h"
#include "cbtr/substraction.h"
#include "disp/drawing.h"
#include "disp/render_state.h"
#include "geom/Stl3d.h"
#include "geom/derivative_cached_tri3d.h"
#include "geom/stl3d.h"
#include "geom/topo_stl3d.h"
#include "mech/apt_derivative_t.h"
#include "mech/apt_t.h"
#include "milling/milling_contours.h"
#endif

#endif
