#include "host/stock_session.h"

#include <stdexcept>

#include "geom/stl3d.h"
#include "host/tri_records.h"

namespace mill {

namespace {

struct soup_deleter_t {
  void operator()(stl3d_t* s) const { stl3d__delete(s); }
};
using soup_ptr = std::unique_ptr<stl3d_t, soup_deleter_t>;

soup_ptr read_stl(const std::string& path) {
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
  if (stl3d__tris_size(soup.get()) == 0) throw std::runtime_error(path + " holds no triangles");
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
