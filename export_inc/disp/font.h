#ifndef QUVRA_DISP_FONT_H
#define QUVRA_DISP_FONT_H

/* The one font of the display, used for all text at 20 pixels high. Without
   a call here, init_disp opens "sys/font.ttf" in the working directory. */

#include <stdint.h>

#include "quvra_export.h"

QV_EXTERN_C_BEGIN

/* Uses the font file at path (UTF-8, as the file system takes it), opened at
   once. A file that can't be opened ends the process with the path in the
   message. path is not kept. */
QV_API void disp__set_font_file(const char* path) QV_NOEXCEPT;

/* Uses the font in size bytes at data. The library keeps its own copy, so the
   caller may free data on return. Ignored when data is null or size is not
   above 0. Bytes that are not a font end the process. */
QV_API void disp__set_font_memory(const void* data, int32_t size) QV_NOEXCEPT;

QV_EXTERN_C_END

#endif
