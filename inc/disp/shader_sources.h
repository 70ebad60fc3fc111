#pragma once

// GLSL sources of the display's programs, assembled at run time from fixed
// fragments. Every fragment shader writes two outputs: the colour at location
// 0 and the 32-bit picking id at location 1, which go to the two colour
// attachments of a viewer's framebuffer, so hover picking needs no second
// pass.
//
// Geometry programs and their vertex inputs:
//   flat         pos, pick              colour from uniColor
//   lit          pos, normal, pick      uniColor, lit
//   colored      pos, color, pick       per-vertex colour, recoloured by table
//   colored_lit  pos, color, normal, pick
// The text program draws a textured quad at p0, in pixels.

#include <string>

namespace disp {

enum class program_kind { flat, lit, colored, colored_lit, text };

std::string vertex_source(program_kind kind);
std::string fragment_source(program_kind kind);

// GLSL statements that declare vec3 <target> = <source> and replace it with
// the colour table's entry for the vertex's pick when that entry is alive:
// the table's fourth component holds the slot's generation plus one (0: no
// colour set). Recolouring millions of triangles is thus a write of one texel.
std::string recolour_fragment(const std::string& target, const std::string& source);

}  // namespace disp
