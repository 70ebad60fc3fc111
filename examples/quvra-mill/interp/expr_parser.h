#pragma once

// Reading RS274/NGC real values. A real value is a number, a parameter
// (#5, ##5, #[#1+1], #<name>), a bracketed expression, a function of a
// bracketed expression (sin[30], atan[1]/[2]) or a signed real value.
// Inside brackets the binary operators bind, tightest first:
//   **   then  * / mod   then  + -   then  eq ne gt ge lt le   then  and or xor
// and operators of one rank group from the left.
// All three throw std::invalid_argument on a malformed value, and on one
// that nests deeper than max_value_depth.

#include "interp/expr_t.h"
#include "interp/line_cursor_t.h"

namespace mill {

// How deeply a value may nest: brackets, signs, functions and parameter
// references inside one another, and operators chained. Reading, evaluating
// and freeing a value recurse that deep, so a bound keeps a hostile line
// from exhausting the stack; no hand-written or generated program comes
// near it.
inline constexpr int max_value_depth = 1000;

expr_t parse_real_value(line_cursor_t& cursor);
// The cursor stands on '['; reads through the matching ']'.
expr_t parse_bracketed(line_cursor_t& cursor);
// The cursor stands on '#'; reads the parameter reference alone, so that
// "#1=..." can treat it as the target of a setting.
expr_t parse_param_ref(line_cursor_t& cursor);

}  // namespace mill
