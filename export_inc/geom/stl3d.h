#ifndef QUVRA_GEOM_STL3D_H
#define QUVRA_GEOM_STL3D_H

/* The triangle soup: the form in which a host hands a mesh to the library.

   A triangle record is twelve doubles, 96 bytes without gaps:
     [0..2] vertex a, [3..5] vertex b, [6..8] vertex c, [9..11] facet normal
   (vertices first, normal last: the reverse of an STL file). Records keep the
   order of their source; nothing here normalises, welds or drops anything.

   Paths are references to narrow std::string objects, handed to the file
   system as they stand, so this header is for C++ hosts. */

#include <stdint.h>

#include <string>

#include "quvra_export.h"

namespace geom {
struct stl3d_t;
}
typedef geom::stl3d_t stl3d_t;

/* Read statuses of stl3d__read_file. */
enum {
  STL3D_READ_OK = 0,
  STL3D_READ_OPEN_FAILED = 1,
  STL3D_READ_MALFORMED = 2,
};

extern "C" {

/* Empty mesh. Owned by the caller, free with stl3d__delete. Null only when
   the allocation fails. */
QV_API stl3d_t* stl3d__new(void) noexcept;

/* Copies count records of twelve doubles from tris (not read when count is
   0). Owned by the caller, free with stl3d__delete. Null when tris is null
   with a non-zero count, or when the allocation fails. */
QV_API stl3d_t* stl3d__new_by_copy_array(const double* tris, uint64_t count) noexcept;

/* Reads a text or binary STL file, told apart by content. Owned by the
   caller, free with stl3d__delete. A file that fails to read is not an error
   of this call: the mesh holds what was read before the failure, and a
   warning "stl_process_status[<status>]:<path>" goes to the error stream. */
QV_API stl3d_t* stl3d__new_by_file(const std::string& path) noexcept;

/* Appends the triangles of a text or binary STL file to mesh, without a
   warning. Returns STL3D_READ_OK, STL3D_READ_OPEN_FAILED or
   STL3D_READ_MALFORMED; a read that stops midway keeps what it read. A null
   mesh gives STL3D_READ_OPEN_FAILED and touches nothing. */
QV_API int32_t stl3d__read_file(const std::string& path, stl3d_t* mesh) noexcept;

/* Number of records; 0 for null. */
QV_API uint64_t stl3d__tris_size(const stl3d_t* mesh) noexcept;

/* The first record, or null for a mesh that never held storage. Borrowed:
   valid until the mesh changes or is deleted. */
QV_API const double* stl3d__tris_data(const stl3d_t* mesh) noexcept;

/* Grows box (min x, y, z, then max x, y, z) over every vertex; the normals
   take no part. The box is not reset first: initialise it to
   +inf, +inf, +inf, -inf, -inf, -inf to start afresh. */
QV_API void stl3d__expand_to_box3d(const stl3d_t* mesh, double* box) noexcept;

/* Null-safe. */
QV_API void stl3d__delete(stl3d_t* mesh) noexcept;
}

#endif
