#ifndef QUVRA_MILLING_CONTOURS_H
#define QUVRA_MILLING_CONTOURS_H

/* The contact of one machining step in the tool's frame: the step's contact
   polygons moved by a stock-to-tool pose, so that z is the tool axis and
   z = 0 the tool tip, with two cheap measures of the contact. Immutable once
   made; any thread may read it. C++ hosts only, as the step results. */

#include "cbtr/substraction.h"
#include "quvra_export.h"

namespace mech {
struct milling_contours_t;
}
typedef mech::milling_contours_t milling_contours_t;

extern "C" {

/* The contours of s, each point moved by stock_to_tool (sixteen doubles,
   column-major, translation in 12..14). box_out (six doubles, may be null)
   receives their box, min xyz then max xyz; +infinity then -infinity
   without points. Owned by the caller, free with milling_contours__delete;
   null for a null s or matrix or when memory runs out. s is only read. */
QV_API milling_contours_t* milling_contours__new_by_substraction(const substraction_t* s, const double* stock_to_tool,
                                                                 double* box_out) noexcept;

/* Null-safe. */
QV_API void milling_contours__delete(milling_contours_t* c) noexcept;

/* The width across the feed (the y extent) of the contact: of the points
   above z when most points are above it, else of all points. 0 without
   points. c must not be null. */
QV_API double milling_contours__get_plural_cutting_width(const milling_contours_t* c, double z) noexcept;

/* The contact's area projected along direction (three doubles), one-sided:
   y counts by its size, and z only when it points down (z < 0). Both
   pointers must be valid. */
QV_API double milling_contours__get_projected_area(const milling_contours_t* c, const double* direction) noexcept;
}

#endif
