// Reads an STL file and prints its facet count and bounding box.
#include <quvra.h>

#include <cmath>
#include <cstdio>
#include <string>

int main(int argc, char** argv) {
  if (argc != 2) return std::puts("usage: quvra-stl-box FILE.stl"), 2;
  stl3d_t* mesh = stl3d__new_by_file(std::string(argv[1]));  // warns if the read fails
  double box[6] = {INFINITY, INFINITY, INFINITY, -INFINITY, -INFINITY, -INFINITY};
  stl3d__expand_to_box3d(mesh, box);
  std::printf("%llu facets, box (%g %g %g) - (%g %g %g)\n", (unsigned long long)stl3d__tris_size(mesh), box[0], box[1],
              box[2], box[3], box[4], box[5]);
  stl3d__delete(mesh);
  return 0;
}
