#pragma once

// The vertex arrays from which a floating mesh is drawn.

#include <vector>

#include "geom/topo/topo_stl3.h"

namespace geom {

// Position pairs of the feature lines: every directed line whose bend is not
// above round_cos squared. A border line (bend NaN) is one; a crease folded
// back by nearly 180 degrees is not, since the test is on the square. A line
// and its twin are both listed, so each feature line is drawn both ways.
std::vector<double> edge_line_vertices(topo_stl3d& mesh);

// Per triangle corner, its vertex normal and then its position.
std::vector<double> lit_tri_vertices(topo_stl3d& mesh);

}  // namespace geom
