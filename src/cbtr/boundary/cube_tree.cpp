#include "cbtr/cube_tree.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>
#include <new>
#include <string_view>

#include "cbtr/build/build_cube_tree.h"
#include "cbtr/cache/cell_caches.h"
#include "cbtr/inspect/fly_pieces.h"
#include "cbtr/inspect/surface_export.h"
#include "cbtr/io/cube_tree_file.h"
#include "cbtr/model/cube_tree_t.h"
#include "common/forwarding_monitor_t.h"
#include "geom/coordinate_limit.h"

namespace {

// Paths cross as UTF-8 whatever the platform's own path encoding.
std::filesystem::path utf8_path(const char* path) {
  return {std::u8string_view(reinterpret_cast<const char8_t*>(path))};
}

static_assert(sizeof(defect_tip_info) == 136, "the record crosses the boundary as packed bytes");

// Hands each defective cell to the host's function, in the packed form.
struct defect_forwarder_t final : cbtr::defect_sink_t {
  explicit defect_forwarder_t(defect_info_fn fn) : host(fn) {}

  void take(const std::vector<cbtr::defect_record_t>& records) override {
    std::vector<defect_tip_info> tips;
    for (const cbtr::defect_record_t& r : records) {
      defect_cell_info cell{};
      std::copy(r.box.begin(), r.box.end(), cell.box);
      cell.depth = r.depth;
      tips.clear();
      for (const cbtr::defect_hit_t& h : r.hits) tips.push_back(packed(h));
      host(&cell, r.depth, tips.data(), tips.size());
    }
  }

  static defect_tip_info packed(const cbtr::defect_hit_t& h) {
    defect_tip_info t{};
    for (int k = 0; k < 3; ++k) {
      t.a[k] = cbtr::component(h.tri->corner_d[0], k);
      t.b[k] = cbtr::component(h.tri->corner_d[1], k);
      t.c[k] = cbtr::component(h.tri->corner_d[2], k);
      t.normal[k] = cbtr::component(h.tri->tri.unit_normal, k);
    }
    t.edge = h.edge;
    t.flags = h.hit.flags & 0x3FFu;
    t.t0 = h.hit.t0;
    const bool in_plane = (h.hit.flags & cbtr::edge_hit_t::in_plane) != 0;
    t.t1 = in_plane ? h.hit.t1 : std::numeric_limits<double>::quiet_NaN();
    if (!in_plane) {
      std::uint64_t bits = 0;
      std::memcpy(&bits, &h.hit.t1, sizeof bits);
      t.t1_low = static_cast<std::uint32_t>(bits);
    }
    return t;
  }

  defect_info_fn host;
};

}  // namespace

extern "C" {

cube_tree_t* cube_tree__new(const stl3d_t* stl, double grid_width, const stop_token* stop,
                            report_progress progress) noexcept {
  return cube_tree__new_with_defect_infos(stl, grid_width, stop, progress, nullptr);
}

cube_tree_t* cube_tree__new_with_defect_infos(const stl3d_t* stl, double grid_width, const stop_token* stop,
                                              report_progress progress, defect_info_fn fn) noexcept {
  if (!stl || !(grid_width > 0) || !std::isfinite(grid_width)) return nullptr;
  if (!geom::records_within_limit(stl->tris)) return nullptr;
  try {
    common::forwarding_monitor_t monitor(progress);
    defect_forwarder_t defects(fn);
    return cbtr::build_cube_tree(*stl, grid_width, stop, progress ? &monitor : nullptr, nullptr,
                                 fn ? &defects : nullptr)
        .release();
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void cube_tree__get_tris(const cube_tree_t* tree, double width, cube_tree_tri_fn fn) noexcept {
  if (!tree || !fn || !(width >= 0)) return;
  try {
    for (const std::array<double, 12>& record : cbtr::surface_records(*tree, width)) fn(record.data());
  } catch (const std::bad_alloc&) {
    // Nothing is listed when the list itself can't be made.
  }
}

void cube_tree__get_rgb_tris(const cube_tree_t* tree, double width, cube_tree_rgb_tris_fn fn) noexcept {
  static_assert(sizeof(rgb_tri) == 15 * sizeof(double), "triangles cross the boundary as doubles");
  if (!tree || !fn || !(width >= 0)) return;
  try {
    const std::vector<std::array<double, 15>> records = cbtr::coloured_surface_records(*tree, width);
    fn(reinterpret_cast<const rgb_tri*>(records.data()), records.size());
  } catch (const std::bad_alloc&) {
    // Nothing is listed when the list itself can't be made.
  }
}

void cube_tree__remove_fly_piece(cube_tree_t* tree) noexcept {
  if (tree) cbtr::remove_fly_pieces(*tree);
}

bool cube_tree__contains_inf_edge_cuts(const cube_tree_t* tree) noexcept {
  return tree && !cbtr::inf_edge_cuts(*tree).empty();
}

void cube_tree__get_inf_edge_cuts_info(const cube_tree_t* tree, cube_tree_inf_edge_fn fn) noexcept {
  if (!tree || !fn) return;
  for (const cbtr::inf_edge_cut_t& cut : cbtr::inf_edge_cuts(*tree))
    fn(cut.box.data(), cut.edges.data(), cut.edges.size());
}

void cube_tree__delete(cube_tree_t* tree) noexcept { delete tree; }

double cube_tree__get_grid_width(const cube_tree_t* tree) noexcept { return tree ? tree->grid_width() : 0.0; }

int32_t cube_tree__write_to(const cube_tree_t* tree, const char* path) noexcept {
  if (!tree || !path) return CUBE_TREE_WRITE_INVALID_ARGUMENTS;
  try {
    return cbtr::write_tree_file(utf8_path(path), *tree) ? CUBE_TREE_WRITE_OK : CUBE_TREE_WRITE_FAILED;
  } catch (const std::bad_alloc&) {
    return CUBE_TREE_WRITE_FAILED;
  }
}

cube_tree_t* cube_tree__new_by_file(const char* path) noexcept {
  if (!path) return nullptr;
  try {
    return cbtr::read_tree_file(utf8_path(path)).release();
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void cube_tree__free_disp_cache(cube_tree_t* tree) noexcept {
  if (tree) cbtr::free_display_caches(*tree);
}

void cube_tree__ExpandToBox3d(cube_tree_t* tree, double* box) noexcept {
  if (tree && box) tree->expand_to_box3d(reinterpret_cast<geom::box3d*>(box));
}

void cube_tree__ExpandToBox3dByMat(cube_tree_t* tree, double* box, const double* mat) noexcept {
  if (tree && box && mat)
    tree->expand_to_box3d(reinterpret_cast<geom::box3d*>(box), reinterpret_cast<const geom::mat4d*>(mat));
}

void cube_tree__RenderByMat(cube_tree_t* tree, cube_tree_bind_t* b, const double* mat) noexcept {
  if (tree && b && mat) tree->display(b, reinterpret_cast<const geom::mat4d*>(mat));
}
}
