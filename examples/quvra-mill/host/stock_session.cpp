#include "host/stock_session.h"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

#include "geom/stl3d.h"
#include "host/surface_checks.h"
#include "host/tri_records.h"
#include "interp/interp_options_t.h"

namespace mill {

namespace {

struct soup_deleter_t {
  void operator()(stl3d_t* s) const { stl3d__delete(s); }
};
using soup_ptr = std::unique_ptr<stl3d_t, soup_deleter_t>;

soup_ptr read_stl(const std::string& path) {
  // The library cannot tell a directory from a malformed file.
  std::error_code ec;
  if (std::filesystem::is_directory(path, ec))
    throw std::runtime_error("cannot open stock file " + path + ": it is a directory");
  soup_ptr soup(stl3d__new());
  if (!soup) throw std::runtime_error("out of memory reading " + path);
  switch (stl3d__read_file(path, soup.get())) {
    case STL3D_READ_OK:
      break;
    case STL3D_READ_OPEN_FAILED:
      throw std::runtime_error("cannot open stock file " + path);
    default:
      throw std::runtime_error(path + " is not a well-formed STL file");
  }
  const std::size_t count = stl3d__tris_size(soup.get());
  if (count == 0) throw std::runtime_error(path + " holds no triangles");
  const std::size_t far = first_triangle_beyond(stl3d__tris_data(soup.get()), count, machine_limit_mm);
  if (far < count)
    throw std::runtime_error(path + ": facet " + std::to_string(far + 1) + " lies beyond the machine's limit of +-" +
                             std::to_string(static_cast<int>(machine_limit_mm)) + " mm");
  return soup;
}

soup_ptr stock_soup(const stock_spec_t& spec) {
  if (spec.kind == stock_kind::stl) return read_stl(spec.stl_path);
  const std::vector<double> tris = box_surface(spec.box);
  soup_ptr soup(stl3d__new_by_copy_array(tris.data(), tris.size() / 12));
  if (!soup) throw std::runtime_error("out of memory making the stock box");
  return soup;
}

struct substraction_deleter_t {
  void operator()(substraction_t* s) const { substraction__dtor(s); }
};

// cube_tree__get_tris hands triangles to a plain function without a context
// pointer, so the records being filled are reached through this slot for
// the length of one call on this thread.
thread_local std::vector<double>* collecting = nullptr;

void collect_triangle(const double tri[12]) {
  // The library leaves some normals uncomputed (NaN); append_triangle
  // computes every one from the corners, so all are alike.
  append_triangle(*collecting, {tri[0], tri[1], tri[2]}, {tri[3], tri[4], tri[5]}, {tri[6], tri[7], tri[8]});
}

}  // namespace

stock_session_t::stock_session_t(const stock_spec_t& spec, double cell) {
  const soup_ptr soup = stock_soup(spec);
  open_edges_ = open_edge_count(stl3d__tris_data(soup.get()), stl3d__tris_size(soup.get()));
  // An open surface leaves cells the library cannot place inside or out,
  // and it fills them by guesswork.
  if (open_edges_ > 0 && !spec.allow_open)
    throw std::runtime_error(spec.stl_path + " is not a closed surface (" + std::to_string(open_edges_) +
                             " edges without a twin); --open-stock builds from it anyway");
  tree_.reset(cube_tree__new(soup.get(), cell, nullptr, nullptr));
  if (!tree_) throw std::runtime_error("the library built no stock");
}

double stock_session_t::grid_width() const { return cube_tree__get_grid_width(tree_.get()); }

cut_outcome_t stock_session_t::cut(const cached_tris_t& volume) {
  // Contours are asked for because the move table reports the contact area.
  const std::unique_ptr<substraction_t, substraction_deleter_t> step(
      cube_tree__substract_by_cached_tris(tree_.get(), &volume, 0, true, false));
  if (!step) throw std::runtime_error("out of memory cutting the stock");
  return {substraction__IsTouched(step.get()), substraction__GetContactContourArea(step.get())};
}

std::vector<double> stock_session_t::surface() const {
  std::vector<double> tris;
  collecting = &tris;
  cube_tree__get_tris(tree_.get(), 0, collect_triangle);
  collecting = nullptr;
  return tris;
}

void stock_session_t::write(const std::string& path) const {
  if (cube_tree__write_to(tree_.get(), path.c_str()) != CUBE_TREE_WRITE_OK)
    throw std::runtime_error("cannot write the stock file " + path);
}

std::vector<double> box_surface(const std::array<double, 6>& box) {
  // Corner (i, j, k) takes the minimum or the maximum along each axis.
  const auto c = [&](int i, int j, int k) { return point3_t{box[3 * i], box[1 + 3 * j], box[2 + 3 * k]}; };
  // Each face's corners counter-clockwise seen from outside.
  const int faces[6][4][3] = {
      {{0, 0, 0}, {0, 0, 1}, {0, 1, 1}, {0, 1, 0}}, {{1, 0, 0}, {1, 1, 0}, {1, 1, 1}, {1, 0, 1}},
      {{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}}, {{0, 1, 0}, {0, 1, 1}, {1, 1, 1}, {1, 1, 0}},
      {{0, 0, 0}, {0, 1, 0}, {1, 1, 0}, {1, 0, 0}}, {{0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}}};
  std::vector<double> out;
  for (const auto& f : faces) {
    point3_t q[4];
    for (int v = 0; v < 4; ++v) q[v] = c(f[v][0], f[v][1], f[v][2]);
    append_triangle(out, q[0], q[1], q[2]);
    append_triangle(out, q[0], q[2], q[3]);
  }
  return out;
}

}  // namespace mill
