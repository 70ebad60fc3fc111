// NOLINTBEGIN(bugprone-reserved-identifier): the family__verb names are the boundary's fixed
// contract.
#include "disp/font.h"

#include "disp/font_state.h"

extern "C" {

void disp__set_font_file(const char* path) noexcept { disp::set_font_file(path ? path : ""); }

void disp__set_font_memory(const void* data, int32_t size) noexcept { disp::set_font_memory(data, size); }
}
// NOLINTEND(bugprone-reserved-identifier)
