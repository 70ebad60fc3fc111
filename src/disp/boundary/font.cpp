#include "disp/font.h"

#include "disp/font_state.h"

extern "C" {

void disp__set_font_file(const char* path) noexcept { disp::set_font_file(path ? path : ""); }

void disp__set_font_memory(const void* data, int32_t size) noexcept {
  disp::set_font_memory(data, size);
}
}
