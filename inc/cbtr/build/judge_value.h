#pragma once

// Judge values settle a grid line through an edge or a vertex of the
// surface, where several triangles meet the line at one point and no single
// normal tells the side. The line is thought moved off that point by an
// infinitesimal step (e, e^2) across it, on axes axis + 1 and axis + 2: it
// then passes through exactly one triangle of the fan, or through several
// where the fan folds over, and meets each at
//   t = t0 + first * e + second * e^2.
// The pair (first, second) is a triangle's judge value; the nearest
// crossing on the side looked at decides. Being exact, the verdict is the
// same in every cell that shares the line, at saddles and folds alike.
//
// Judge values are quotients of normal components, the widest fractions of
// the stock code, so their width can be watched (QV_CBTR_WIDTH_PROBE) and
// reduced (QV_CBTR_PACK); QV_CBTR_SHARP_ENCODE_A hashes the normals behind
// the tips of every new leaf, for a debugger to look at.

#include <cstdint>
#include <string>

#include "cbtr/build/edge_tips_t.h"
#include "cbtr/model/cell_numbering.h"

namespace cbtr {

struct tip_flags_t {
  bool pack = false;
  bool width_probe = false;
  bool sharp_encode = false;
};

// The three switches as the environment set them when the library loaded.
const tip_flags_t& tip_flags();
// How a switch reads its variable: "QV_CBTR_PACK" and "QV_CBTR_WIDTH_PROBE"
// are on when present at all, "QV_CBTR_SHARP_ENCODE_A" when present,
// non-empty and not "0".
tip_flags_t tip_flags_from(const char* pack, const char* probe, const char* sharp);

struct judge_t {
  fr first;   // -n[axis + 1] / n[axis]
  fr second;  // -n[axis + 2] / n[axis]
};

// The triangle must not be parallel to the line (n[axis] != 0).
judge_t judge_value(const tri_extension_t& tri, int axis);
// Lexicographic: -1, 0 or +1.
int compare_judges(const judge_t& a, const judge_t& b);

// The larger bit length of numerator and denominator; 0 for zero.
std::size_t fraction_bit_width(const fr& f);

// The probe's report, empty when no judge value was taken since load.
std::string width_probe_report();

// The leaf's twelve tip normals, octahedrally encoded and hashed into the
// sharp counters.
void sharp_encode_leaf(const edge_tips_t& evaluation);

}  // namespace cbtr
