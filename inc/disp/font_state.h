#pragma once

// The one font of the process, at one size for the whole system: text is 20
// pixels high. The face comes from a file ("sys/font.ttf" in the working
// directory unless a host says otherwise) or from bytes the host hands over.
// All of it is guarded by font_mutex(), which text rasterising takes too.

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstdint>
#include <mutex>
#include <string>

namespace disp {

inline constexpr const char* default_font_file = "sys/font.ttf";

std::mutex& font_mutex();

// Drops the face, forgets font bytes, and opens path. A file that can't be
// opened ends the process, with the path in the message.
void set_font_file(const std::string& path);

// Drops the face and opens a copy of size bytes at data. Null data or a size
// of 0 or less is ignored. Bytes that are not a font end the process.
void set_font_memory(const void* data, std::int32_t size);

// True once a host or init_disp has chosen a font.
bool font_is_set();

// The open face, or null before a font is set or when the file held none.
// Use under font_mutex().
FT_Face font_face();

// Opens the library and the face if they aren't open. Caller holds
// font_mutex(). The name is the one failure reports give.
void _init_ft();

}  // namespace disp
