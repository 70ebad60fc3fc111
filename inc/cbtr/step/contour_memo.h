#pragma once

// The most contour polygons one step has collected in this process, kept
// apart for subtraction and addition and 8192 at first: a step that
// collects contours reserves that many up front, so that a long program
// stops regrowing its lists after the first large cut.

#include <cstddef>

namespace cbtr {

std::size_t expected_contours(bool subtract);
// Raises the memo of that kind to count if count is larger; safe from
// several threads.
void note_contours(bool subtract, std::size_t count);

}  // namespace cbtr
