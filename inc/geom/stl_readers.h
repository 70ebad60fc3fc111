#pragma once

// Reading STL files. The form is told by content, never by the file name: a
// first line of any content (under 300 characters) followed by the word
// "facet" or "endsolid" makes a text file; anything else is binary. The word
// "solid" is deliberately not consulted, because binary headers often begin
// with it.

#include <string>
#include <vector>

#include "geom/stl3d_t.h"

namespace geom {

enum class stl_form { text, binary };

stl_form detect_stl_form(const std::string& path);

// Both readers append to out and keep what they read before a failure.
// Numbers of a text file are read as 32-bit floats, so that it carries no
// more precision than a binary one.
stl_status read_text_stl(const std::string& path, std::vector<stl_tri_t>& out);
stl_status read_binary_stl(const std::string& path, std::vector<stl_tri_t>& out);

stl_status read_stl_file(const std::string& path, std::vector<stl_tri_t>& out);

}  // namespace geom
