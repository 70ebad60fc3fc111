// quvra-info FILE.stl...: what the library reads from STL files. For each
// file: its read status, facet count and bounding box, and the size of the
// box. Exits with 1 when any file failed to read completely.

#include <quvra.h>

#include <cmath>
#include <cstdio>
#include <string>

namespace {

const char* status_text(int32_t status) {
  switch (status) {
    case STL3D_READ_OK:
      return "read completely";
    case STL3D_READ_OPEN_FAILED:
      return "could not be opened";
    default:
      return "malformed (kept what was read before the fault)";
  }
}

int report(const std::string& path) {
  stl3d_t* mesh = stl3d__new();
  if (!mesh) return std::fprintf(stderr, "out of memory\n"), 1;
  const int32_t status = stl3d__read_file(path, mesh);
  double box[6] = {INFINITY, INFINITY, INFINITY, -INFINITY, -INFINITY, -INFINITY};
  stl3d__expand_to_box3d(mesh, box);
  std::printf("%s\n  status  %d, %s\n  facets  %llu\n", path.c_str(), status, status_text(status),
              static_cast<unsigned long long>(stl3d__tris_size(mesh)));
  if (stl3d__tris_size(mesh) > 0) {
    std::printf("  box     (%g, %g, %g) - (%g, %g, %g)\n", box[0], box[1], box[2], box[3], box[4], box[5]);
    std::printf("  size    %g x %g x %g\n", box[3] - box[0], box[4] - box[1], box[5] - box[2]);
  }
  stl3d__delete(mesh);
  return status == STL3D_READ_OK ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: quvra-info FILE.stl...\n");
    return 2;
  }
  int failed = 0;
  for (int i = 1; i < argc; ++i) failed |= report(argv[i]);
  return failed;
}
