#pragma once

// The cube tree file: a headerless depth-first dump of a tree.
//
// All integers and doubles are little-endian, with no padding:
//   file:    resolution (u32), then the root's node record
//   record:  kind (i32), corner word (u32), attachment id (u64);
//            kinds 4 and 8 go on with the 12 tips (f64, in edge order);
//            kind 8 goes on with a child mask (u16, bit c for child c) and
//            one record per set bit, in ascending order of c.
// Other kinds end after 16 bytes. Coordinates are not stored: they follow
// from the position in the tree. The attachment id is the address the
// attachment had when the file was written, good only for telling which
// cells shared one; caches and links are not stored.

#include <cstdint>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <unordered_map>

#include "cbtr/model/cube_tree_t.h"

namespace cbtr {

// Gives the cells read from a file live attachments: one new attachment per
// distinct non-zero id, shared by every cell with that id.
class attachment_map_t {
 public:
  // make returns a new default attachment; it is not owned by the map.
  explicit attachment_map_t(std::function<cbtr_attachment_t*()> make) : _make(std::move(make)) {}

  // Null for id 0.
  cbtr_attachment_t* resolve(std::uint64_t id);

 private:
  std::function<cbtr_attachment_t*()> _make;
  std::unordered_map<std::uint64_t, cbtr_attachment_t*> _by_id;
};

// Writes tree to out: only the resolution for an empty tree (which reads
// back as a tree whose root is of kind unset). The stream is flushed after
// each subtree at depth resolution - 4, so that a large file grows in steady
// pieces, and at the end. False when the stream failed; out then holds part
// of the dump.
bool write_tree(std::ostream& out, const cube_tree_t& tree);

// Reads a tree. Without a map every attachment id is dropped. A file of the
// resolution alone is an empty stock.
//
// Every record is checked before the tree is handed out: a known kind with
// a corner word that fits it (every corner set, all air for an air cell, all
// solid for a solid one, neither for a leaf), leaves no deeper than the
// resolution and branches above it, tips that are NaN, infinite or on their
// edge, branch corners that agree with the children, and the file ending
// exactly after the root's record. A file that breaks any of them, ends
// early or holds a resolution beyond 26 gives null, and fault (when given)
// says what and at which byte.
std::unique_ptr<cube_tree_t> read_tree(std::istream& in, attachment_map_t* attachments, std::string* fault = nullptr);

// write_tree into a new or truncated binary file. False when the file can't
// be opened or written; a file that failed midway holds part of the dump.
bool write_tree_file(const std::filesystem::path& path, const cube_tree_t& tree);

// read_tree from a binary file, without attachments. Null when the file
// can't be opened or is refused; a refusal or a directory is told in the
// log.
std::unique_ptr<cube_tree_t> read_tree_file(const std::filesystem::path& path);

}  // namespace cbtr
