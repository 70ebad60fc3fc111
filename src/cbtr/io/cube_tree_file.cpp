#include "cbtr/io/cube_tree_file.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <fstream>
#include <istream>
#include <ostream>
#include <string>

#include "common/log_sink.h"

namespace cbtr {

namespace {

constexpr std::size_t max_record_bytes = 4 + 4 + 8 + 12 * 8 + 2;

// One node record, encoded little-endian whatever the host's byte order.
class record_out_t {
 public:
  void put(std::uint64_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) _bytes[_size++] = static_cast<char>(value >> (8 * i));
  }
  void put(double value) { put(std::bit_cast<std::uint64_t>(value), 8); }
  void write_to(std::ostream& out) const { out.write(_bytes.data(), static_cast<std::streamsize>(_size)); }

 private:
  std::array<char, max_record_bytes> _bytes{};
  std::size_t _size = 0;
};

class tree_writer_t {
 public:
  tree_writer_t(std::ostream& out, std::uint32_t resolution)
      : _out(out), _flush_depth(static_cast<std::int64_t>(resolution) - 4) {}

  void write_node(const cube_node_t& node, int depth) {
    record_out_t record;
    const std::int32_t kind = node.kind;
    record.put(static_cast<std::uint32_t>(kind), 4);
    record.put(node.corners, 4);
    record.put(reinterpret_cast<std::uintptr_t>(node.attachment), 8);
    if (kind == kind_leaf || kind == kind_branch)
      for (const auto& tip : node.tips) record.put(tip.load());
    if (kind != kind_branch) {
      record.write_to(_out);
      return;
    }
    const std::array<std::shared_ptr<cube_node_t>, 8> children = snapshot_children(node);
    std::uint32_t mask = 0;
    for (int c = 0; c < 8; ++c)
      if (children[c]) mask |= 1u << c;
    record.put(mask, 2);
    record.write_to(_out);
    for (const std::shared_ptr<cube_node_t>& child : children)
      if (child) write_node(*child, depth + 1);
    if (depth == _flush_depth) _out.flush();
  }

 private:
  std::ostream& _out;
  const std::int64_t _flush_depth;
};

// Thrown inside the reader for a file that breaks the format; read_tree
// turns it into a refusal.
struct file_fault_t {
  std::string what;
};

// Reads little-endian fields; a stream that ends inside one is a fault.
class field_in_t {
 public:
  explicit field_in_t(std::istream& in) : _in(in) {}

  std::uint64_t get(int bytes) {
    std::array<unsigned char, 8> raw{};
    if (!_in.read(reinterpret_cast<char*>(raw.data()), bytes)) throw file_fault_t{"the file ends inside a record"};
    _offset += bytes;
    std::uint64_t value = 0;
    for (int i = 0; i < bytes; ++i) value |= static_cast<std::uint64_t>(raw[i]) << (8 * i);
    return value;
  }
  double get_double() { return std::bit_cast<double>(get(8)); }
  bool at_end() { return _in.peek() == std::char_traits<char>::eof(); }
  std::uint64_t offset() const { return _offset; }

 private:
  std::istream& _in;
  std::uint64_t _offset = 0;
};

bool states_are_set(std::uint32_t corners) {
  if (corners >> 16) return false;
  for (int k = 0; k < 8; ++k)
    if (corner_of(corners, k) == corner_unset) return false;
  return true;
}

// A tip is NaN (no crossing), infinite (a cut along the edge) or a place on
// its own edge.
bool tip_on_edge(const std::array<double, 6>& box, int e, double tip) {
  const int axis = edge_axis(e);
  return std::isnan(tip) || std::isinf(tip) || (tip >= box[axis] && tip <= box[axis + 3]);
}

// The corner word a branch must have: corner k of child k, and for a null
// child the state at the branch centre. Any word fits a branch without
// children.
bool corners_agree(std::uint32_t corners, const std::array<std::shared_ptr<cube_node_t>, 8>& children) {
  int first = 0;
  while (first < 8 && !children[first]) ++first;
  if (first == 8) return true;
  const std::uint32_t centre = corner_of(children[first]->corners, 7 - first);
  for (int k = 0; k < 8; ++k) {
    const std::uint32_t expected = children[k] ? corner_of(children[k]->corners, k) : centre;
    if (corner_of(corners, k) != expected) return false;
  }
  return true;
}

// Reads a tree and checks every record against the format and the tree's
// invariants: kinds and corner words that belong together, leaves no deeper
// than the resolution, branches above it, tips on their edges, branch
// corners that agree with the children, and nothing after the last record.
class tree_reader_t {
 public:
  tree_reader_t(std::istream& in, attachment_map_t* attachments) : _in(in), _attachments(attachments) {}

  std::unique_ptr<cube_tree_t> read() {
    const auto resolution = static_cast<std::uint32_t>(_in.get(4));
    if (resolution > static_cast<std::uint32_t>(max_depth))
      throw file_fault_t{"resolution " + std::to_string(resolution) + " is beyond " + std::to_string(max_depth)};
    auto tree = std::make_unique<cube_tree_t>(resolution);
    // The resolution alone is an empty stock.
    if (_in.at_end()) return tree;
    auto root =
        std::make_shared<cube_node_t>(std::weak_ptr<cube_node_t>{}, lattice_centre, lattice_centre, lattice_centre);
    _read_node(root, 0, static_cast<int>(resolution));
    if (!_in.at_end()) throw file_fault_t{"bytes follow the last record"};
    tree->root.store(root);
    return tree;
  }

  std::uint64_t offset() const { return _in.offset(); }

 private:
  void _read_node(const std::shared_ptr<cube_node_t>& node, int depth, int resolution) {
    const auto kind = static_cast<std::int32_t>(_in.get(4));
    const auto corners = static_cast<std::uint32_t>(_in.get(4));
    const std::uint64_t id = _in.get(8);
    _check_kind(kind, corners, depth, resolution);
    node->kind = kind;
    node->corners = corners;
    node->attachment = _attachments ? _attachments->resolve(id) : nullptr;
    if (kind == kind_air || kind == kind_solid) return;
    const std::array<double, 6> box = cell_box(*node);
    for (int e = 0; e < 12; ++e) {
      node->tips[e] = _in.get_double();
      if (!tip_on_edge(box, e, node->tips[e])) throw file_fault_t{"a tip lies off its edge"};
    }
    if (kind == kind_branch) _read_children(node, depth, resolution);
  }

  static void _check_kind(std::int32_t kind, std::uint32_t corners, int depth, int resolution) {
    if (kind != kind_air && kind != kind_solid && kind != kind_leaf && kind != kind_branch)
      throw file_fault_t{"unknown cell kind " + std::to_string(kind)};
    if (!states_are_set(corners)) throw file_fault_t{"a corner word with unset or unknown states"};
    if ((kind == kind_air) != (corners == corners_all_air) && kind != kind_branch)
      throw file_fault_t{"a corner word that does not fit the cell's kind"};
    if ((kind == kind_solid) != (corners == corners_all_solid) && kind != kind_branch)
      throw file_fault_t{"a corner word that does not fit the cell's kind"};
    if (kind == kind_leaf && depth > resolution) throw file_fault_t{"a leaf below the resolution"};
    if (kind == kind_branch && depth >= std::min(resolution, max_depth))
      throw file_fault_t{"a branch at the finest depth"};
  }

  void _read_children(const std::shared_ptr<cube_node_t>& node, int depth, int resolution) {
    const auto mask = static_cast<std::uint32_t>(_in.get(2));
    if (mask >> 8) throw file_fault_t{"a child mask with bits beyond the eight children"};
    auto slots = std::make_shared<cube_node_t::children_t>();
    std::array<std::shared_ptr<cube_node_t>, 8> children;
    for (int c = 0; c < 8; ++c) {
      if (!(mask & (1u << c))) continue;
      children[c] =
          std::make_shared<cube_node_t>(node, child_centre(node->x, depth, c & 1), child_centre(node->y, depth, c & 2),
                                        child_centre(node->z, depth, c & 4));
      _read_node(children[c], depth + 1, resolution);
      (*slots)[c].store(children[c]);
    }
    if (!corners_agree(node->corners, children))
      throw file_fault_t{"a branch whose corners disagree with its children"};
    node->children.store(slots);
  }

  field_in_t _in;
  attachment_map_t* _attachments;
};

}  // namespace

cbtr_attachment_t* attachment_map_t::resolve(std::uint64_t id) {
  if (id == 0) return nullptr;
  auto [it, inserted] = _by_id.try_emplace(id, nullptr);
  if (inserted) it->second = _make();
  return it->second;
}

bool write_tree(std::ostream& out, const cube_tree_t& tree) {
  record_out_t resolution;
  resolution.put(tree.resolution, 4);
  resolution.write_to(out);
  if (const std::shared_ptr<cube_node_t> root = tree.root.load())
    tree_writer_t(out, tree.resolution).write_node(*root, 0);
  out.flush();
  return !out.fail();
}

std::unique_ptr<cube_tree_t> read_tree(std::istream& in, attachment_map_t* attachments, std::string* fault) {
  tree_reader_t reader(in, attachments);
  try {
    return reader.read();
  } catch (const file_fault_t& f) {
    if (fault) *fault = f.what + " (at byte " + std::to_string(reader.offset()) + ")";
    return nullptr;
  }
}

bool write_tree_file(const std::filesystem::path& path, const cube_tree_t& tree) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (!out.is_open() || !write_tree(out, tree)) return false;
  out.close();
  return !out.fail();
}

std::unique_ptr<cube_tree_t> read_tree_file(const std::filesystem::path& path) {
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) {
    common::log_line("stock file " + path.string() + " is a directory");
    return nullptr;
  }
  std::ifstream in(path, std::ios::binary);
  if (!in.is_open()) return nullptr;
  std::string fault;
  std::unique_ptr<cube_tree_t> tree = read_tree(in, nullptr, &fault);
  if (!tree) common::log_line("stock file " + path.string() + " refused: " + fault);
  return tree;
}

}  // namespace cbtr
