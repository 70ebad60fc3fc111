#pragma once

// The display's five programs, built once per process by init_disp and shared
// by all contexts, with the locations of their uniforms and attributes read
// once. A location the program does not have reads -1, which GL ignores.
// Afterwards the records are read-only.

#include <cstdint>

#include "disp/gl.h"

namespace disp {

// A program name that was never built.
inline constexpr GLuint unset_program = UINT32_MAX;

// flat, lit, colored and colored_lit: one record shape, since drawings set
// whichever of these their program has.
struct geometry_program_t {
  GLuint id = unset_program;
  GLint mvp = -1, mv = -1, uniColor = -1, specular_rate = -1;
  GLint use_vertex_pick = -1, picking_id = -1, color_table = -1, color_table_size = -1;
  GLint pos = -1, normal = -1, color = -1, pick = -1;  // attributes
};

struct text_program_t {
  GLuint id = unset_program;
  GLint proj = -1, p0 = -1, uniColor = -1, sampler = -1, picking_id = -1;
  GLint pos = -1, texCoordinate = -1;  // attributes
};

struct program_set_t {
  geometry_program_t flat, lit, colored, colored_lit;
  text_program_t text;
};

const program_set_t& programs();

// Builds each program whose name is still unset, in the order flat, lit,
// colored, colored_lit, text, and locates its inputs. Needs a context locked.
void build_programs();

}  // namespace disp
