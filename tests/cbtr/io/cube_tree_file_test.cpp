#include "cbtr/io/cube_tree_file.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <streambuf>

#include "cbtr/cube_tree.h"
#include "hand_trees.h"

namespace {

using namespace cbtr;
using quvra_test::add_child;

std::string dump(const cube_tree_t& tree) {
  std::ostringstream out;
  EXPECT_TRUE(write_tree(out, tree));
  return out.str();
}

std::unique_ptr<cube_tree_t> load(const std::string& bytes, attachment_map_t* map = nullptr) {
  std::istringstream in(bytes);
  return read_tree(in, map);
}

std::uint64_t bits(double v) { return std::bit_cast<std::uint64_t>(v); }

// Same cells in the same places, tips compared bit for bit (NaN included).
void expect_same_cells(const cube_node_t& a, const cube_node_t& b) {
  ASSERT_EQ(a.x, b.x);
  ASSERT_EQ(a.y, b.y);
  ASSERT_EQ(a.z, b.z);
  EXPECT_EQ(a.kind, b.kind);
  EXPECT_EQ(a.corners, b.corners);
  for (int e = 0; e < 12; ++e) EXPECT_EQ(bits(a.tips[e]), bits(b.tips[e])) << "edge " << e;
  const auto ka = snapshot_children(a);
  const auto kb = snapshot_children(b);
  for (int c = 0; c < 8; ++c) {
    ASSERT_EQ(ka[c] == nullptr, kb[c] == nullptr) << "slot " << c;
    if (!kb[c]) continue;
    EXPECT_EQ(kb[c]->parent.lock().get(), &b);
    expect_same_cells(*ka[c], *kb[c]);
  }
}

std::string le_bytes(std::uint64_t value, int n) {
  std::string out;
  for (int i = 0; i < n; ++i) out.push_back(static_cast<char>(value >> (8 * i)));
  return out;
}

// --- Layout ---------------------------------------------------------------

// Resolution, then per cell kind, corners, attachment id, and for a leaf or
// branch the twelve tips; a branch adds its child mask and its children in
// slot order.
TEST(CubeTreeFileLayout, RecordsSpellKindCornersIdTipsAndChildMask) {
  auto leaf = quvra_test::tree_with_root(17, kind_leaf, quvra_test::solid_corners({0}));
  quvra_test::place_tips(*leaf->root.load(), 0.25);
  std::string bytes = dump(*leaf);
  ASSERT_EQ(bytes.size(), 4u + 16u + 96u);
  EXPECT_EQ(bytes.substr(0, 4), le_bytes(17, 4));
  EXPECT_EQ(bytes.substr(4, 4), le_bytes(kind_leaf, 4));
  EXPECT_EQ(bytes.substr(8, 4), le_bytes(quvra_test::solid_corners({0}), 4));
  EXPECT_EQ(bytes.substr(12, 8), le_bytes(0, 8));
  for (int e = 0; e < 12; ++e) EXPECT_EQ(bytes.substr(20 + 8 * e, 8), le_bytes(bits(leaf->root.load()->tips[e]), 8));

  auto branch = quvra_test::tree_with_root(3, kind_branch, corners_all_solid);
  add_child(branch->root.load(), 6, kind_solid, corners_all_solid);
  add_child(branch->root.load(), 1, kind_air, corners_all_air);
  bytes = dump(*branch);
  ASSERT_EQ(bytes.size(), 4u + 114u + 32u);
  EXPECT_EQ(bytes.substr(116, 2), le_bytes(0b01000010, 2));
  EXPECT_EQ(bytes.substr(118, 4), le_bytes(kind_air, 4));
  EXPECT_EQ(bytes.substr(134, 4), le_bytes(kind_solid, 4));

  EXPECT_EQ(dump(cube_tree_t(9)), le_bytes(9, 4));
}

// A stream buffer that notes how much had been written at each flush.
class flush_log_t : public std::stringbuf {
 public:
  std::vector<std::size_t> flushed_at;

 protected:
  int sync() override {
    flushed_at.push_back(str().size());
    return 0;
  }
};

TEST(CubeTreeFileLayout, FlushesAfterEachSubtreeFourAboveTheResolution) {
  // Resolution 5: the four branches at depth 1 each end a steady piece.
  auto tree = quvra_test::tree_with_root(5, kind_branch, 0);
  const auto root = tree->root.load();
  for (int c : {0, 3, 4, 6}) add_child(add_child(root, c, kind_branch, 0), 1, kind_air, corners_all_air);
  flush_log_t log;
  std::ostream out(&log);
  ASSERT_TRUE(write_tree(out, *tree));
  const std::size_t piece = 114 + 16;
  EXPECT_EQ(log.flushed_at, (std::vector<std::size_t>{118 + piece, 118 + 2 * piece, 118 + 3 * piece, 118 + 4 * piece,
                                                      118 + 4 * piece}));
}

// --- Round trip -----------------------------------------------------------

TEST(CubeTreeFileRoundTrip, FileThroughTheBoundaryComesBackCellByCell) {
  for (const auto& tree : {quvra_test::mixed_tree(), quvra_test::full_tree()}) {
    const char* path = "round_trip_\xC3\xA9.cbt";  // UTF-8 é in the name
    ASSERT_EQ(cube_tree__write_to(tree.get(), path), CUBE_TREE_WRITE_OK);
    cube_tree_t* back = cube_tree__new_by_file(path);
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->resolution, tree->resolution);
    expect_same_cells(*tree->root.load(), *back->root.load());
    std::ifstream in(path, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), dump(*back));
    cube_tree__delete(back);
  }
}

TEST(CubeTreeFileRoundTrip, SharedAttachmentIdsShareOneNewAttachment) {
  auto tree = quvra_test::mixed_tree();
  const auto root = tree->root.load();
  const auto kids = snapshot_children(*root);
  int old_a = 0, old_b = 0;  // only their addresses are written
  kids[0]->attachment = reinterpret_cast<cbtr_attachment_t*>(&old_a);
  kids[7]->attachment = reinterpret_cast<cbtr_attachment_t*>(&old_a);
  kids[2]->attachment = reinterpret_cast<cbtr_attachment_t*>(&old_b);

  int made[2] = {};
  int calls = 0;
  attachment_map_t map([&] { return reinterpret_cast<cbtr_attachment_t*>(&made[calls++]); });
  const auto back = load(dump(*tree), &map);
  const auto back_kids = snapshot_children(*back->root.load());
  EXPECT_EQ(calls, 2);
  EXPECT_EQ(back_kids[0]->attachment, reinterpret_cast<cbtr_attachment_t*>(&made[0]));
  EXPECT_EQ(back_kids[7]->attachment, back_kids[0]->attachment);
  EXPECT_EQ(back_kids[2]->attachment, reinterpret_cast<cbtr_attachment_t*>(&made[1]));
  EXPECT_EQ(back->root.load()->attachment, nullptr);
  EXPECT_EQ(back_kids[1]->attachment, nullptr);
  // Without a map every id is dropped.
  EXPECT_EQ(snapshot_children(*load(dump(*tree))->root.load())[0]->attachment, nullptr);
}

// --- Boundary -------------------------------------------------------------

TEST(CubeTreeFileBoundary, BadArgumentsAndUnopenablePathsSaySo) {
  const auto tree = quvra_test::mixed_tree();
  EXPECT_EQ(cube_tree__write_to(nullptr, "x.cbt"), CUBE_TREE_WRITE_INVALID_ARGUMENTS);
  EXPECT_EQ(cube_tree__write_to(tree.get(), nullptr), CUBE_TREE_WRITE_INVALID_ARGUMENTS);
  EXPECT_EQ(cube_tree__write_to(tree.get(), "no/such/dir/x.cbt"), CUBE_TREE_WRITE_FAILED);
  EXPECT_EQ(cube_tree__new_by_file(nullptr), nullptr);
  EXPECT_EQ(cube_tree__new_by_file("no/such/dir/x.cbt"), nullptr);
}

TEST(CubeTreeFileBoundary, EmptyTreeWritesAFourByteFile) {
  cube_tree_t empty(4);
  ASSERT_EQ(cube_tree__write_to(&empty, "empty.cbt"), CUBE_TREE_WRITE_OK);
  EXPECT_EQ(std::filesystem::file_size("empty.cbt"), 4u);
}

}  // namespace
