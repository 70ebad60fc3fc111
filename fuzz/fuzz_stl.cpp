// Any bytes as an STL file, read by the reader that FUZZ_STL_READER names
// (the binary and the text reader are two targets); what reads is then made
// an exact mesh, as a tool or stock would be.

#include <cstdint>
#include <vector>

#include "geom/stl_readers.h"
#include "geom/topo_stl3wfr.h"
#include "scratch_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<geom::stl_tri_t> tris;
  geom::FUZZ_STL_READER(fuzz::write_scratch(data, size), tris);
  if (tris.empty()) return 0;
  topo_stl3wfr_t* mesh = topo_stl3wfr__new(static_cast<std::int32_t>(tris.size()), tris.front().a.data(), 1.0 / 1024);
  topo_stl3wfr__delete(mesh);
  return 0;
}
