#include "cbtr/build/build_cube_tree.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <numeric>
#include <optional>
#include <unordered_set>

#include "cbtr/build/cell_tree_builder_t.h"
#include "common/log_sink.h"
#include "common/parallel_chunks.h"
#include "common/stop.h"

namespace cbtr {

namespace {

using key_t = std::array<double, 9>;

// FNV-1a over the 72 bytes; keys compare by their bytes.
struct key_hash {
  std::size_t operator()(const key_t& k) const {
    unsigned char bytes[sizeof k];
    std::memcpy(bytes, k.data(), sizeof k);
    std::uint64_t h = 0xcbf29ce484222325ULL;
    for (unsigned char b : bytes) h = (h ^ b) * 0x100000001b3ULL;
    return static_cast<std::size_t>(h);
  }
};
struct key_equal {
  bool operator()(const key_t& a, const key_t& b) const { return std::memcmp(a.data(), b.data(), sizeof a) == 0; }
};

// The triangle from its lexicographically smallest corner, cyclic order kept.
key_t rotated_key(const geom::stl_tri_t& t) {
  const std::array<double, 3>* c[3] = {&t.a, &t.b, &t.c};
  int first = 0;
  for (int i = 1; i < 3; ++i)
    if (*c[i] < *c[first]) first = i;
  key_t key;
  for (int i = 0; i < 3; ++i) std::copy(c[(first + i) % 3]->begin(), c[(first + i) % 3]->end(), key.begin() + 3 * i);
  return key;
}

// Each distinct coordinate of the soup on the fraction grid, converted once:
// corners are shared by about six triangles, and rings of a mesh share
// coordinates too.
class coordinate_grid_t {
 public:
  coordinate_grid_t(const std::vector<geom::stl_tri_t>& tris, double resolution) {
    for (const geom::stl_tri_t& t : tris)
      for (const auto* p : {&t.a, &t.b, &t.c}) _values.insert(_values.end(), p->begin(), p->end());
    std::sort(_values.begin(), _values.end());
    _values.erase(std::unique(_values.begin(), _values.end()), _values.end());
    _fractions.resize(_values.size());
    common::parallel_chunks(_values.size(), [&](std::size_t begin, std::size_t end) {
      for (std::size_t i = begin; i < end; ++i) _fractions[i] = geom::from_double(_values[i], resolution);
    });
  }

  exact_tri_t exact_tri(const geom::stl_tri_t& t) const {
    return exact_tri_t{_point(t.a), _point(t.b), _point(t.c), {}, {}};
  }

 private:
  const geom::fr& _fraction(double v) const {
    return _fractions[std::lower_bound(_values.begin(), _values.end(), v) - _values.begin()];
  }
  geom::vec3fr _point(const std::array<double, 3>& p) const {
    return {_fraction(p[0]), _fraction(p[1]), _fraction(p[2])};
  }

  std::vector<double> _values;  // sorted, distinct
  std::vector<geom::fr> _fractions;
};

void report(common::progress_monitor_t* monitor, const std::string& text, std::int64_t total) {
  if (monitor) monitor->set_msg(text, total);
}

}  // namespace

std::vector<geom::stl_tri_t> without_duplicates(const std::vector<geom::stl_tri_t>& tris) {
  std::unordered_set<key_t, key_hash, key_equal> seen;
  seen.reserve(tris.size());
  std::vector<geom::stl_tri_t> kept;
  kept.reserve(tris.size());
  for (const geom::stl_tri_t& t : tris)
    if (seen.insert(rotated_key(t)).second) kept.push_back(t);
  return kept;
}

std::vector<tri_extension_t> exact_records(const std::vector<geom::stl_tri_t>& tris, double resolution,
                                           const stop_token* stop, common::progress_monitor_t* monitor) {
  const coordinate_grid_t grid(tris, resolution);
  std::vector<std::optional<tri_extension_t>> made(tris.size());
  std::atomic<std::size_t> done{0};
  common::parallel_chunks(tris.size(), [&](std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) {
      if (stop && stop_token__stop_requested(stop)) return;
      made[i].emplace(grid.exact_tri(tris[i]));
      const std::size_t n = done.fetch_add(1) + 1;
      if (monitor && n % 10000 == 0) monitor->set_numerator(static_cast<std::int64_t>(n));
    }
  });
  std::vector<tri_extension_t> records;
  records.reserve(made.size());
  for (std::optional<tri_extension_t>& r : made)
    if (r && !r->has_no_area()) records.push_back(std::move(*r));
  return records;
}

std::unique_ptr<cube_tree_t> build_cube_tree(const geom::stl3d_t& soup, double grid_width, const stop_token* stop,
                                             common::progress_monitor_t* monitor, build_counts_t* counts,
                                             defect_sink_t* defects) {
  const auto resolution = static_cast<std::uint32_t>(resolution_from_width(grid_width));
  auto tree = std::make_unique<cube_tree_t>(resolution);
  const double fr_resolution = fraction_resolution(soup.tris, grid_width);
  char text[64];
  std::snprintf(text, sizeof text, "fraction_resolution: %f", fr_resolution);
  common::log_line(text);
  report(monitor, text, 0);

  const std::vector<geom::stl_tri_t> unique = without_duplicates(soup.tris);
  build_counts_t c{unique.size(), soup.tris.size() - unique.size()};
  std::string step = "Build triangle extension cache.";
  if (c.duplicates) step += " (" + std::to_string(c.duplicates) + " duplicate faces dropped)";
  report(monitor, step, static_cast<std::int64_t>(c.kept));
  std::vector<tri_extension_t> records = exact_records(unique, fr_resolution, stop, monitor);
  if (stop && stop_token__stop_requested(stop)) return tree;
  c.zero_area = c.kept - records.size();
  c.kept = records.size();

  report(monitor,
         "Start building nodes. (" + std::to_string(c.kept) + " faces; dropped " + std::to_string(c.duplicates) +
             " duplicate, " + std::to_string(c.zero_area) + " zero-area after quantization)",
         0);
  std::vector<std::uint32_t> all(records.size());
  std::iota(all.begin(), all.end(), 0u);
  cell_tree_builder_t builder(records, resolution, line_reuse_t::rare, stop);
  std::vector<defect_record_t> defect_records;
  if (defects) builder.record_defects(&defect_records);
  std::shared_ptr<cube_node_t> root = builder.build(root_cell, all);
  if (builder.stopped()) return tree;
  if (defects) defects->take(defect_records);
  tree->root.store(std::move(root));
  c.defects = builder.defects();
  if (c.defects) common::log_line("cube tree: " + std::to_string(c.defects) + " cells could not be classified");
  report(monitor, "Finished building nodes.", 0);
  if (counts) *counts = c;
  return tree;
}

}  // namespace cbtr
