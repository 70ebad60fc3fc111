#ifndef QUVRA_DISP_DRAWING_H
#define QUVRA_DISP_DRAWING_H

/* Vertex drawings: a buffer of doubles on the GPU with one of eight layouts
   (kinds), and the calls that draw any displayable object of the library.

   kind  doubles a vertex  layout
   0     3                 position
   1     6                 normal, position
   2     6                 colour, position
   3     9                 colour, normal, position
   4     4                 pick, position
   5     7                 pick, normal, position
   6     7                 pick, colour, position
   7     10                pick, colour, normal, position

   A pick is an unsigned 32-bit id given as a double; it reaches the id
   attachment exactly. Kinds without colour draw in the bind's colour.
   Every call needs a GL context locked by the caller; GL failures reach the
   log through the debug output and are never fatal. C++ hosts only. */

#include <stdint.h>

#include "quvra_export.h"

namespace disp {
struct drawing_buffer_t;
class IDisplayee;
class bind;
}  // namespace disp
typedef disp::drawing_buffer_t drawing_t;

extern "C" {

/* Uploads count doubles of data as a drawing of kind; a trailing part of a
   vertex is uploaded but never drawn. Owned by the caller: drawing__delete
   frees the buffer. Null for a kind above 7, a negative count, null data
   with a positive count, or when memory runs out. */
QV_API drawing_t* drawing__new(const double* data, int32_t count, uint32_t kind) noexcept;

/* Draws all vertices as GL primitive mode, 0 (points) to 9 (polygon); a
   higher mode, a null drawing or bind, or a kind above 7 draws nothing.
   kind must be the one the drawing was made with. */
QV_API void drawing__display(drawing_t* d, uint32_t kind, disp::bind* b, uint32_t mode) noexcept;

/* Writes the box of the positions (six doubles: min xyz, max xyz), read
   back from the GPU; an empty drawing gives min +inf and max -inf. */
QV_API void drawing__get_box3d(drawing_t* d, uint32_t kind, double* box) noexcept;

/* Deletes the drawing's buffer and clears it. The object itself stays
   allocated. Nothing for null or a kind above 7. */
QV_API void drawing__delete(drawing_t* d, uint32_t kind) noexcept;

/* Draws any displayable object of the library (mesh, stock, tool volume,
   step result) in the space of the top of b's stack. Null draws nothing. */
QV_API void Displayee__Render(disp::IDisplayee* obj, disp::bind* b) noexcept;

/* Grows box (six doubles) by the object. Null does nothing. */
QV_API void Displayee__ExpandToBox3d(disp::IDisplayee* obj, double* box) noexcept;
}

#endif
