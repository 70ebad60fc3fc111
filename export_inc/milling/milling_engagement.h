#ifndef QUVRA_MILLING_ENGAGEMENT_H
#define QUVRA_MILLING_ENGAGEMENT_H

/* Cutter engagement: for each height of the tool's flank and each ring of
   its bottom, the angles about the tool axis (radians in [-pi, pi)) at
   which the tool touches the stock during one move. It can be kept as
   bytes and read back, so that the physics of a recorded simulation can be
   replayed without the stock. Immutable once built; any thread may read it.

   The byte form is packed little endian without padding, magic or version:
     int32 tag, float64 ring_step, then the bottom list and the side list;
     a list is an int32 slice count, then per slice float64 pos (radius or
     height), float64 step (ring width or slice thickness), int32 range count
     and per range float64 start, float64 end.
   Its size is 12 + for each list (4 + per slice 20 + 16 per range); an
   engagement without slices takes 20 bytes. */

#include <stdint.h>

#include "quvra_export.h"

#ifdef __cplusplus
namespace mech {
struct milling_contours_t;
struct engagement_t;
}  // namespace mech
typedef mech::milling_contours_t milling_contours_t;
typedef mech::engagement_t milling_engagement_t;
#else
typedef struct milling_contours_t milling_contours_t;
typedef struct milling_engagement_t milling_engagement_t;
#endif

QV_EXTERN_C_BEGIN

/* Builds the engagement of one move from its contours (tool frame).
   tag:          the host's own number, carried along unread.
   levels:       level_count ascending heights of the side slices, with
                 level_steps the thickness of the slice at each.
   pose_prev, pose_cur: the tool's poses at the start and end of the move
                 (sixteen doubles each); their difference is the motion.
   bottom_radius: contact near the tip within this radius counts as bottom,
                 cut into rings of width ring_step; 0.001 or less: no bottom.
   clip_to_motion: keep only the front of the contact, where the surface
                 moves into the material; then loops reaching lower than
                 -ring_step are left out.
   Owned by the caller, free with milling_engagement__delete. Null for null
   contours or poses, a negative level_count, null level arrays with
   level_count > 0, or when memory runs out. */
QV_API milling_engagement_t* milling_engagement__new_by_contours(const milling_contours_t* contours, uint32_t tag,
                                                                 const double* levels, const double* level_steps,
                                                                 int level_count, const double* pose_prev,
                                                                 const double* pose_cur, double bottom_radius,
                                                                 double ring_step, int clip_to_motion) QV_NOEXCEPT;

/* Reads the byte form of size bytes. Null when bytes is null, the bytes are
   short, hold a negative count, or have bytes left over; never reads past
   size. Owned by the caller, free with milling_engagement__delete. */
QV_API milling_engagement_t* milling_engagement__new_by_bytes(const void* bytes, int size) QV_NOEXCEPT;

/* The size of the byte form; 0 for null. */
QV_API int milling_engagement__get_bytes_size(const milling_engagement_t* e) QV_NOEXCEPT;

/* Writes the whole byte form into buffer, or nothing when a pointer is null
   or capacity is below the size. */
QV_API void milling_engagement__get_bytes(const milling_engagement_t* e, void* buffer, int capacity) QV_NOEXCEPT;

/* Null-safe. */
QV_API void milling_engagement__delete(milling_engagement_t* e) QV_NOEXCEPT;

QV_EXTERN_C_END

#endif
