#ifndef QUVRA_MILLING_PHYSICS_H
#define QUVRA_MILLING_PHYSICS_H

/* Milling force: a mechanistic model. A session describes the tool (its
   flutes as edge tables, and the cutting coefficients); a force step turns
   the session, the engagement of one move and the cutting conditions into
   the cutting force, edge force and moment at every sampled angle of one
   tool revolution, and eleven summary values. Millimetres, radians,
   seconds, newtons; moments in newton metres.

   A session is immutable once made: several threads may run steps on it at
   once. A step touches only its arguments. */

#include <stdint.h>

#include "milling/milling_engagement.h"
#include "quvra_export.h"

#ifdef __cplusplus
namespace mech {
struct milling_physics_session_t;
}
typedef mech::milling_physics_session_t milling_physics_session_t;
#else
typedef struct milling_physics_session_t milling_physics_session_t;
#endif

/* The cutting conditions of one step. */
typedef struct milling_force_input_t {
  double pose_prev[16];     /* the tool's pose before and after the move, */
  double pose_cur[16];      /* column-major, translation in 12..14 */
  double dt;                /* time of the step */
  double feed;              /* feed rate: a step whose feed per tooth is not
                               finite gives NaN forces */
  double omega;             /* spindle speed, rad/s */
  double max_z;             /* side slices above are out of reach */
  double pressure_min_chip; /* chip thickness needed to count in the pressure */
  int32_t samples;          /* angular samples per revolution, at least 1 */
  int32_t sign_flag;        /* model 5: zero negates the second force component */
  int32_t flank_flag;       /* non-zero measures the flank's speed into the surface */
} milling_force_input_t;

/* The eleven summary values of a step, in this order, N = flutes * samples:
   max_chip, max_chip_normal, mean_edge_length (sum of edge lengths / N),
   mean_normal_force (/ N), power, mean_chip_area (/ N), removal,
   mean_engaged_arc, max_engaged_arc, max_pressure_arc, max_flank_speed
   (-infinity without flank contact, 0 when the flank is not measured). */
enum { MILLING_FORCE_OUTPUT_COUNT = 11 };

QV_EXTERN_C_BEGIN

/* A tool for force steps.
   flank_angle, min_chip (thickness below which edge force fades linearly),
   power_factor (scale of the power), feed_ref_z (height of the tool point
   whose motion counts as the feed).
   flute_count flutes (may be 0); flute i has side_counts[i] side edge points
   (ascending z) and bottom_counts[i] bottom points (ascending r; negative:
   no bottom edge); the points of all flutes follow one another in
   side_points and bottom_points, four doubles each: r, theta (lag angle), z,
   rake. z_ranges holds each flute's z_min, z_max.
   model 1 to 5 with dims (dims_count ints) and coeff_count coeffs:
     1: no dims, 4 coeffs: Kc = (0, c0, c1), Ke = (0, c2, c3)
     2: no dims, 6 coeffs: Kc = (c0, c1, c2), Ke = (c3, c4, c5)
     3: dims n >= 1; 6n coeffs: Kc, Ke per flute (row flute % n)
     4: dims n >= 1, nb >= 0, nc >= 0; 3 nb nc n + 6n coeffs: Kc over flute,
        polar and azimuth of the cutting speed, then n base Kc, then n Ke
     5: dims n >= 1, na >= 0, ne >= 1, half_range; 3 na ne n + 3n + 3 coeffs:
        Kc over flute, tooth angle, edge inclination; n bottom Kc; one Ke
   Kc multiplies chip area and Ke edge length; their components act along
   the edge (t), towards the axis (c) and along the turning (b), or in
   model 5 along e1, e2, e3 of the local edge.
   Owned by the caller, free with milling_physics_session__delete. Null on
   negative counts, null arrays that the counts need, a model outside 1 to
   5, dims or coeffs that are not the model's, or when memory runs out. */
QV_API milling_physics_session_t* milling_physics_session__new(double flank_angle, double min_chip, double power_factor,
                                                               double feed_ref_z, int flute_count,
                                                               const int* side_counts, const double* side_points,
                                                               const double* z_ranges, const int* bottom_counts,
                                                               const double* bottom_points, int model, const int* dims,
                                                               int dims_count, const double* coeffs,
                                                               int coeff_count) QV_NOEXCEPT;

/* Null-safe. */
QV_API void milling_physics_session__delete(milling_physics_session_t* session) QV_NOEXCEPT;

/* One force step. cut_forces, edge_forces and moments receive 3 * samples
   doubles (x, y, z per sample), output MILLING_FORCE_OUTPUT_COUNT. 0 on
   success; 2, with every buffer left as it was, when a pointer is null or
   samples < 1. */
QV_API int milling_physics__run_force_step(const milling_physics_session_t* session,
                                           const milling_engagement_t* engagement, const milling_force_input_t* input,
                                           double* cut_forces, double* edge_forces, double* moments,
                                           double* output) QV_NOEXCEPT;

QV_EXTERN_C_END

#endif
