#pragma once

// How a 32-bit picking id is packed: the low bits are a slot of the colour
// table, the high bits the generation of that slot, so that an id whose slot
// has been reused under a later generation can be told from the live one.

#include <cstdint>

namespace disp {

inline constexpr unsigned pick_generation_shift = 22;
inline constexpr std::uint32_t pick_slot_mask = (std::uint32_t{1} << pick_generation_shift) - 1;

}  // namespace disp
