#pragma once

// The engagement as bytes, so that a recorded simulation can replay its
// physics without the stock: packed little endian, no padding, magic or
// version.
//   int32 tag, float64 ring_step, then the bottom and the side slice lists;
//   a list is an int32 count, then per slice float64 pos, float64 step,
//   int32 range count and per range float64 start, float64 end.

#include <cstddef>
#include <optional>

#include "milling/engagement_t.h"

namespace mech {

// 12 + (4 + sum of 20 + 16 per range) per list: 20 for an empty engagement.
std::size_t engagement_bytes_size(const engagement_t& e);

// Writes exactly engagement_bytes_size(e) bytes.
void write_engagement_bytes(const engagement_t& e, unsigned char* out);

// Nothing when the bytes are short, hold a negative count, or have bytes
// left over: every read is checked against what remains.
std::optional<engagement_t> read_engagement_bytes(const unsigned char* bytes, std::size_t size);

}  // namespace mech
