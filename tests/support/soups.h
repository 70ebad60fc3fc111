#pragma once

// Closed triangle soups with known geometry, for tests and benchmarks.
// All are counter-clockwise seen from outside, with outward unit normals.

#include <vector>

#include "geom/stl3d_t.h"

namespace quvra_test {

// Axis-aligned box from (x0, y0, z0) to (x1, y1, z1): 12 triangles.
std::vector<geom::stl_tri_t> box_soup(double x0, double y0, double z0, double x1, double y1, double z1);

// UV sphere of the given radius around the origin with about
// 2 * rings * sectors triangles (rings >= 2, sectors >= 3).
std::vector<geom::stl_tri_t> sphere_soup(double radius, int rings, int sectors);

// An L-shaped block with a sharp concave edge: the box (x0, y0, z0) -
// (x1, y1, z1) without the corner x > xs, z > zs, over its whole y depth.
std::vector<geom::stl_tri_t> step_block_soup(double x0, double y0, double z0, double x1, double y1, double z1,
                                             double xs, double zs);

// A box from (x0, y0, z0) to (x1, y1, z_eave) under a gabled roof whose
// ridge runs along y over the middle of x at z_ridge.
std::vector<geom::stl_tri_t> gable_soup(double x0, double y0, double z0, double x1, double y1, double z_eave,
                                        double z_ridge);

// Cylinder about the z axis through (cx, cy), from z0 to z1, with the
// given number of sides: a flat end mill's body.
std::vector<geom::stl_tri_t> cylinder_soup(double cx, double cy, double radius, double z0, double z1, int sides);

// Torus around the z axis with rings x sides quads of two triangles each.
std::vector<geom::stl_tri_t> torus_soup(double r_major, double r_minor, int rings, int sides);

}  // namespace quvra_test
