#include "cbtr/io/cube_tree_file.h"

#include <array>
#include <bit>
#include <fstream>
#include <istream>
#include <ostream>

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

// Reads little-endian fields; once the stream has ended, or the read has
// been ended, every field reads as zero.
class field_in_t {
 public:
  explicit field_in_t(std::istream& in) : _in(in) {}

  std::uint64_t get(int bytes) {
    std::array<unsigned char, 8> raw{};
    if (!_ended && _in.good()) _in.read(reinterpret_cast<char*>(raw.data()), bytes);
    std::uint64_t value = 0;
    for (int i = 0; i < bytes; ++i) value |= static_cast<std::uint64_t>(raw[i]) << (8 * i);
    return value;
  }
  double get_double() { return std::bit_cast<double>(get(8)); }
  void end() { _ended = true; }

 private:
  std::istream& _in;
  bool _ended = false;
};

class tree_reader_t {
 public:
  tree_reader_t(std::istream& in, attachment_map_t* attachments) : _in(in), _attachments(attachments) {}

  std::uint32_t read_resolution() { return static_cast<std::uint32_t>(_in.get(4)); }

  void read_node(const std::shared_ptr<cube_node_t>& node, int depth) {
    const auto kind = static_cast<std::int32_t>(_in.get(4));
    const auto corners = static_cast<std::uint32_t>(_in.get(4));
    const std::uint64_t id = _in.get(8);
    if (kind == kind_branch && depth >= max_depth) {
      // Children here would be finer than the lattice: not a file of ours.
      _in.end();
      return;
    }
    node->kind = kind;
    node->corners = corners;
    node->attachment = _attachments ? _attachments->resolve(id) : nullptr;
    if (kind != kind_leaf && kind != kind_branch) return;
    for (auto& tip : node->tips) tip = _in.get_double();
    if (kind == kind_branch) _read_children(node, depth);
  }

 private:
  void _read_children(const std::shared_ptr<cube_node_t>& node, int depth) {
    const auto mask = static_cast<std::uint32_t>(_in.get(2));
    auto children = std::make_shared<cube_node_t::children_t>();
    node->children.store(children);
    for (int c = 0; c < 8; ++c) {
      if (!(mask & (1u << c))) continue;
      auto child =
          std::make_shared<cube_node_t>(node, child_centre(node->x, depth, c & 1), child_centre(node->y, depth, c & 2),
                                        child_centre(node->z, depth, c & 4));
      (*children)[c].store(child);
      read_node(child, depth + 1);
    }
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

std::unique_ptr<cube_tree_t> read_tree(std::istream& in, attachment_map_t* attachments) {
  tree_reader_t reader(in, attachments);
  auto tree = std::make_unique<cube_tree_t>(reader.read_resolution());
  auto root =
      std::make_shared<cube_node_t>(std::weak_ptr<cube_node_t>{}, lattice_centre, lattice_centre, lattice_centre);
  tree->root.store(root);
  reader.read_node(root, 0);
  return tree;
}

bool write_tree_file(const std::filesystem::path& path, const cube_tree_t& tree) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (!out.is_open() || !write_tree(out, tree)) return false;
  out.close();
  return !out.fail();
}

std::unique_ptr<cube_tree_t> read_tree_file(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in.is_open()) return nullptr;
  return read_tree(in, nullptr);
}

}  // namespace cbtr
