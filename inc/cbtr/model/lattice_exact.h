#pragma once

// Where exact values meet the lattice. Cell corners are multiples of 1/1024
// and exact in doubles; a crossing computed on fractions is stored as a
// double, and that double must lie on the same side of every lattice value
// as the fraction does, or a tip would jump over a cell corner.

#include "geom/fraction_t.h"

namespace cbtr {

// The lattice value x (a multiple of 1/1024) as an exact fraction.
geom::fr lattice_fraction(double x);

// The double nearest to t that keeps t's order against every lattice value:
// equal to a lattice value only when t is.
double lattice_safe_double(geom::fr t);

// True when [estimate - bound, estimate + bound] holds no lattice value, so
// the estimate orders against lattice values as the exact value does.
bool clear_of_lattice(double estimate, double bound);

}  // namespace cbtr
