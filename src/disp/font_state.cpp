#include "disp/font_state.h"

#include <fstream>
#include <vector>

#include "common/check.h"
#include "common/log_sink.h"

namespace disp {

namespace {

struct font_state_t {
  FT_Library library = nullptr;
  FT_Face face = nullptr;
  std::string font_file = default_font_file;
  std::vector<FT_Byte> font_memory;  // empty when the font is a file
  bool chosen = false;
};

// Lives as long as the process: the face may be used by a display thread
// that ends after static destruction starts.
font_state_t& state() {
  static auto* s = new font_state_t;
  return *s;
}

void drop_face(font_state_t& s) {
  if (s.face) FT_Done_Face(s.face);
  s.face = nullptr;
}

// A file that exists but holds no face is logged, not fatal: text is then
// missing, the rest of the display works.
void log_unreadable_face(const std::string& path, FT_Error err) {
  common::log_line("freetype could not read a face from " + path + " (error " + std::to_string(err) +
                   "); text will not be drawn");
}

}  // namespace

std::mutex& font_mutex() {
  static auto* mutex = new std::mutex;
  return *mutex;
}

void _init_ft() {
  font_state_t& s = state();
  if (!s.library && FT_Init_FreeType(&s.library)) QV_ABORT("freetype init lib failed");
  if (s.face) return;
  if (s.font_memory.empty()) {
    if (!std::ifstream(s.font_file, std::ios::binary).is_open())
      QV_ABORT("freetype init lib failed. File is not accessible: " + s.font_file);
    if (const FT_Error err = FT_New_Face(s.library, s.font_file.c_str(), 0, &s.face)) {
      s.face = nullptr;
      log_unreadable_face(s.font_file, err);
    }
  } else if (FT_New_Memory_Face(s.library, s.font_memory.data(), static_cast<FT_Long>(s.font_memory.size()), 0,
                                &s.face)) {
    QV_ABORT("freetype init memory face failed");
  }
  if (!s.face) return;
  FT_Set_Char_Size(s.face, 0, 1280, 72, 72);
  FT_Set_Pixel_Sizes(s.face, 0, 20);
}

void set_font_file(const std::string& path) {
  std::lock_guard lock(font_mutex());
  font_state_t& s = state();
  drop_face(s);
  s.font_memory.clear();
  s.font_file = path;
  s.chosen = true;
  _init_ft();
}

void set_font_memory(const void* data, std::int32_t size) {
  if (!data || size <= 0) return;
  std::lock_guard lock(font_mutex());
  font_state_t& s = state();
  drop_face(s);
  const auto* bytes = static_cast<const FT_Byte*>(data);
  s.font_memory.assign(bytes, bytes + size);
  s.chosen = true;
  _init_ft();
}

bool font_is_set() {
  std::lock_guard lock(font_mutex());
  return state().chosen;
}

FT_Face font_face() { return state().face; }

}  // namespace disp
