// Writes the seed corpora of the fuzz targets into <out>/<target>/: small
// valid inputs made with the library and the tests' geometry, so that the
// fuzzer starts from inputs that go deep and no binary seed is kept in the
// repository.
//   quvra_fuzz_seeds <out>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "cbtr/cube_tree.h"
#include "geom/stl3d.h"
#include "soups.h"
#include "stl_files.h"

namespace fs = std::filesystem;

namespace {

void write_stl_seeds(const fs::path& out) {
  const std::vector<std::vector<geom::stl_tri_t>> soups = {quvra_test::box_soup(0, 0, 0, 1, 2, 3),
                                                           quvra_test::sphere_soup(2.5, 4, 6),
                                                           quvra_test::gable_soup(-1, -1, 0, 1, 1, 1, 1.5)};
  for (std::size_t i = 0; i < soups.size(); ++i) {
    const std::string name = "soup" + std::to_string(i) + ".stl";
    quvra_test::write_binary_stl((out / "fuzz_stl_binary" / name).string(), soups[i]);
    quvra_test::write_text_stl((out / "fuzz_stl_text" / name).string(), soups[i]);
  }
}

// Stocks at a coarse and a finer grid, so that the seeds hold branches,
// leaves and null slots while staying a few kilobytes long.
void write_stock_seeds(const fs::path& out) {
  const std::vector<geom::stl_tri_t> soup = quvra_test::sphere_soup(3.0, 5, 8);
  stl3d_t* stl = stl3d__new_by_copy_array(soup.front().a.data(), soup.size());
  for (const double width : {2.0, 0.5}) {
    cube_tree_t* tree = cube_tree__new(stl, width, nullptr, nullptr);
    const std::string path = (out / "fuzz_stock_file" / ("sphere-" + std::to_string(width) + ".qvt")).string();
    cube_tree__write_to(tree, path.c_str());
    cube_tree__delete(tree);
  }
  stl3d__delete(stl);
}

// First byte: how many of the following bytes are the numerator.
void write_fraction_seeds(const fs::path& out) {
  const std::vector<std::vector<std::uint8_t>> seeds = {
      {2, 0x2C, 0x01, 0x03},
      {2, 0xD4, 0xFE, 0x07},
      {1, 0x80, 0x00},
      {8, 0x9A, 0x99, 0x99, 0x99, 0x99, 0x99, 0xB9, 0x3F, 0xFC, 0xA9, 0xF1, 0xD2, 0x4D, 0x62, 0x50, 0x3F},
  };
  for (std::size_t i = 0; i < seeds.size(); ++i)
    quvra_test::write_file((out / "fuzz_fraction_bytes" / ("seed" + std::to_string(i))).string(),
                           std::string(seeds[i].begin(), seeds[i].end()));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: quvra_fuzz_seeds <out>\n");
    return 2;
  }
  const fs::path out = argv[1];
  for (const char* target : {"fuzz_stl_binary", "fuzz_stl_text", "fuzz_stock_file", "fuzz_fraction_bytes"})
    fs::create_directories(out / target);
  write_stl_seeds(out);
  write_stock_seeds(out);
  write_fraction_seeds(out);
  return 0;
}
