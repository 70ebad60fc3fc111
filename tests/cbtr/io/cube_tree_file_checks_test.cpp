// The stock file reader refuses every file that breaks the format or the
// tree's invariants, and a refused file gives no tree at all.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "cbtr/cube_tree.h"
#include "cbtr/io/cube_tree_file.h"
#include "common/log.h"
#include "hand_trees.h"

namespace {

using namespace cbtr;

const std::string bad_input = std::string(QUVRA_TEST_DATA_DIR) + "/bad_input/";

std::string dump(const cube_tree_t& tree) {
  std::ostringstream out;
  EXPECT_TRUE(write_tree(out, tree));
  return out.str();
}

// The fault read_tree gives, empty when it gives a tree.
std::string fault_of(const std::string& bytes) {
  std::istringstream in(bytes);
  std::string fault;
  const std::unique_ptr<cube_tree_t> tree = read_tree(in, nullptr, &fault);
  EXPECT_EQ(tree == nullptr, !fault.empty());
  return fault;
}

std::string le_bytes(std::uint64_t value, int n) {
  std::string out;
  for (int i = 0; i < n; ++i) out.push_back(static_cast<char>(value >> (8 * i)));
  return out;
}

// mixed_tree's dump with the bytes at offset replaced.
std::string patched(std::size_t offset, const std::string& bytes) {
  std::string file = dump(*quvra_test::mixed_tree());
  file.replace(offset, bytes.size(), bytes);
  return file;
}

// Offsets in mixed_tree's dump: the resolution, the root branch record, then
// its child 0, a leaf.
constexpr std::size_t root_at = 4;
constexpr std::size_t root_mask_at = root_at + 112;
constexpr std::size_t leaf_at = root_at + 114;

std::vector<std::string> log_lines;

}  // namespace

TEST(CubeTreeFileChecks, ResolutionAloneIsAnEmptyStock) {
  std::istringstream in(le_bytes(9, 4));
  const auto tree = read_tree(in, nullptr);
  ASSERT_NE(tree, nullptr);
  EXPECT_EQ(tree->resolution, 9u);
  EXPECT_EQ(tree->root.load(), nullptr);
}

TEST(CubeTreeFileChecks, EveryTruncationAndTrailingBytesAreRefused) {
  const std::string bytes = dump(*quvra_test::mixed_tree());
  for (std::size_t n = 0; n < bytes.size(); ++n) {
    if (n == 4) continue;  // the resolution alone: an empty stock
    EXPECT_NE(fault_of(bytes.substr(0, n)).find("ends inside a record"), std::string::npos) << n;
  }
  EXPECT_EQ(fault_of(bytes), "");
  EXPECT_NE(fault_of(bytes + '\0').find("bytes follow"), std::string::npos);
}

TEST(CubeTreeFileChecks, KindsAndCornerWordsMustFitTogether) {
  EXPECT_NE(fault_of(patched(leaf_at, le_bytes(kind_unset, 4))).find("unknown cell kind 0"), std::string::npos);
  EXPECT_NE(fault_of(patched(leaf_at, le_bytes(3, 4))).find("unknown cell kind 3"), std::string::npos);
  // A corner left unset, a word with high bits, a leaf that is all solid.
  EXPECT_NE(fault_of(patched(leaf_at + 4, le_bytes(0xAAA8, 4))).find("unset"), std::string::npos);
  EXPECT_NE(fault_of(patched(leaf_at + 4, le_bytes(0x1AAAA, 4))).find("unset"), std::string::npos);
  EXPECT_NE(fault_of(patched(leaf_at + 4, le_bytes(corners_all_solid, 4))).find("kind"), std::string::npos);
  // The air child (slot 1) follows the leaf's 112 bytes.
  EXPECT_NE(fault_of(patched(leaf_at + 112 + 4, le_bytes(corners_all_solid, 4))).find("kind"), std::string::npos);
}

TEST(CubeTreeFileChecks, DepthsStayWithinTheResolutionAndTheLattice) {
  // mixed_tree has leaves at depth 2 under branches at depth 1.
  EXPECT_NE(fault_of(patched(0, le_bytes(1, 4))).find("branch at the finest depth"), std::string::npos);
  EXPECT_NE(fault_of(patched(0, le_bytes(27, 4))).find("resolution 27"), std::string::npos);
  std::ifstream in(bad_input + "stock_branch_at_finest_depth.cbt", std::ios::binary);
  const std::string deep((std::istreambuf_iterator<char>(in)), {});
  EXPECT_NE(fault_of(deep).find("branch at the finest depth"), std::string::npos);
}

TEST(CubeTreeFileChecks, TipsLieOnTheirEdgesAndBranchCornersAgreeWithChildren) {
  // The leaf is child 0 of the root: its edges span -65536 to 0.
  for (const double tip : {1.0, -70000.0}) {
    const std::string file = patched(leaf_at + 16, le_bytes(std::bit_cast<std::uint64_t>(tip), 8));
    EXPECT_NE(fault_of(file).find("off its edge"), std::string::npos) << tip;
  }
  for (const double tip : {-65536.0, -0.0, std::numeric_limits<double>::infinity()}) {
    const std::string file = patched(leaf_at + 16, le_bytes(std::bit_cast<std::uint64_t>(tip), 8));
    EXPECT_EQ(fault_of(file), "") << tip;
  }
  // Corner 2 of the root is that of its solid child 2.
  const std::string file = dump(*quvra_test::mixed_tree());
  const auto corners = static_cast<std::uint32_t>(static_cast<unsigned char>(file[root_at + 4])) |
                       static_cast<std::uint32_t>(static_cast<unsigned char>(file[root_at + 5])) << 8;
  const std::uint32_t flipped = (corners & ~(3u << 4)) | (corner_air << 4);
  EXPECT_NE(fault_of(patched(root_at + 4, le_bytes(flipped, 4))).find("disagree"), std::string::npos);
  EXPECT_NE(fault_of(patched(root_mask_at, le_bytes(0x1FF, 2))).find("child mask"), std::string::npos);
}

// Files that gave trees whose cutting or fly-piece removal crashed.
TEST(CubeTreeFileChecks, BrokenFilesGiveNullAndALogLineThroughTheBoundary) {
  set_log_func([](const char* msg) { log_lines.emplace_back(msg); });
  for (const char* name : {"stock_truncated.cbt", "stock_branch_at_finest_depth.cbt", "stock_unset_kind.cbt"}) {
    log_lines.clear();
    EXPECT_EQ(cube_tree__new_by_file((bad_input + name).c_str()), nullptr) << name;
    ASSERT_EQ(log_lines.size(), 1u) << name;
    EXPECT_NE(log_lines[0].find(std::string(name) + " refused: "), std::string::npos) << log_lines[0];
  }
  log_lines.clear();
  EXPECT_EQ(cube_tree__new_by_file(bad_input.c_str()), nullptr);
  ASSERT_EQ(log_lines.size(), 1u);
  EXPECT_NE(log_lines[0].find("is a directory"), std::string::npos);
  set_log_func(nullptr);
}

TEST(CubeTreeFileChecks, ValidFileStillCutsAndLosesItsFlyPieces) {
  const char* path = "checked_full.cbt";
  ASSERT_EQ(cube_tree__write_to(quvra_test::full_tree().get(), path), CUBE_TREE_WRITE_OK);
  cube_tree_t* tree = cube_tree__new_by_file(path);
  ASSERT_NE(tree, nullptr);
  cube_tree__remove_fly_piece(tree);
  int tris = 0;
  static int* count = &tris;
  cube_tree__get_tris(tree, 0.0, [](const double*) { ++*count; });
  EXPECT_GT(tris, 0);
  cube_tree__delete(tree);
}
