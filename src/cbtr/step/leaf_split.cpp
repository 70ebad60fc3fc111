#include "cbtr/step/leaf_split.h"

#include "cbtr/model/cell_surface.h"

#include <cmath>
#include <limits>
#include <memory>

namespace cbtr {

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();

// A point of the 3 x 3 x 3 grid of a split cell is numbered i + 3 j + 9 k
// for its indices i, j, k (0 low face, 1 middle, 2 high face) on x, y, z.
constexpr std::array<int, 3> stride = {1, 3, 9};

int point(int i, int j, int k) { return i * stride[0] + j * stride[1] + k * stride[2]; }

// The point at index along on axis a, p on the next axis and q on the one
// after.
int on_axes(int a, int along, int p, int q) {
  return along * stride[a] + p * stride[axis_after(a)] + q * stride[axis_before(a)];
}

// The 3 x 3 x 3 points of the split cell and the 54 segments between them.
class split_grid_t {
 public:
  split_grid_t(const cell_t& cell, std::uint32_t mode) : _mode(mode) {
    for (int a = 0; a < 3; ++a) {
      _at[a] = {cell.face_model(a, false), lattice_to_model(cell.centre[a]), cell.face_model(a, true)};
      for (auto& half : _tip[a])
        for (auto& row : half)
          for (double& t : row) t = none;
    }
  }

  std::uint32_t state(int point) const { return _state[point]; }
  void set_corner(int point, std::uint32_t s) { _state[point] = s; }
  double at(int axis, int index) const { return _at[axis][index]; }
  double tip(int a, int half, int p, int q) const { return _tip[a][half][p][q]; }

  // The line along a at (p, q), whose end points are known, crossed at t
  // (NaN: not crossed): its middle point and both halves. False when the
  // crossing contradicts the ends, or the middle was known otherwise.
  bool set_line(int a, int p, int q, double t) {
    const std::uint32_t s0 = state(on_axes(a, 0, p, q)), s2 = state(on_axes(a, 2, p, q));
    if (std::isnan(t) != (s0 == s2)) return false;
    std::uint32_t middle = s0;
    if (!std::isnan(t)) middle = t < at(a, 1) ? s2 : t > at(a, 1) ? s0 : _mode;
    const int m = on_axes(a, 1, p, q);
    if (state(m) != 0 && state(m) != middle) return false;
    _state[m] = middle;
    for (int h = 0; h < 2; ++h) {
      const bool crossed = state(on_axes(a, h, p, q)) != state(on_axes(a, h + 1, p, q));
      if (crossed && !(at(a, h) <= t && t <= at(a, h + 1))) return false;
      _tip[a][h][p][q] = crossed ? t : none;
    }
    return true;
  }

  // The crossing of the line along a at (p, q), from whichever half has it.
  double crossing(int a, int p, int q) const {
    return std::isnan(_tip[a][0][p][q]) ? _tip[a][1][p][q] : _tip[a][0][p][q];
  }

 private:
  std::uint32_t _mode;
  std::array<std::array<double, 3>, 3> _at;
  std::array<std::uint32_t, 27> _state{};
  double _tip[3][2][3][3];
};

bool split_edges(split_grid_t& g, std::uint32_t word, const cube_node_t::tips_t& tips) {
  for (int k = 0; k < 8; ++k)
    g.set_corner(point(2 * (k & 1), 2 * ((k >> 1) & 1), 2 * ((k >> 2) & 1)), corner_of(word, k));
  for (int e = 0; e < 12; ++e) {
    const int a = edge_axis(e), low = edge_low_corner(e);
    const int p = 2 * ((low >> axis_after(a)) & 1), q = 2 * ((low >> axis_before(a)) & 1);
    const double t = edge_has_crossing(edge_code(word, e)) ? tips[e].load() : none;
    if (!std::isnan(t) && !std::isfinite(t)) return false;
    if (!g.set_line(a, p, q, t)) return false;
  }
  return true;
}

// Where the straight trace p1-p2 on a face crosses the face's middle line
// across axis `along`, as a coordinate on that axis; NaN if it doesn't.
double trace_crossing(const std::array<double, 2>& p1, const std::array<double, 2>& p2, int along, double middle) {
  const int across = 1 - along;
  if (p1[across] == p2[across]) return none;
  const double s = (middle - p1[across]) / (p2[across] - p1[across]);
  if (s < 0 || s > 1) return none;
  if (std::abs(p2[along] - p1[along]) < 1e-12) return p1[along];
  return p1[along] + s * (p2[along] - p1[along]);
}

// The face across axis n at index side (0 or 2): the surface crosses it along
// the line between the tips on its edges, in face coordinates (u, v).
bool split_face(split_grid_t& g, int n, int side) {
  const int u = axis_after(n), v = axis_before(n);
  std::array<std::array<double, 2>, 4> points;
  int count = 0;
  for (int i : {0, 2}) {
    // The edge along u at v index i, and the edge along v at u index i.
    const double tu = g.crossing(u, i, side), tv = g.crossing(v, side, i);
    if (!std::isnan(tu)) points[count++] = {tu, g.at(v, i)};
    if (!std::isnan(tv)) points[count++] = {g.at(u, i), tv};
  }
  if (count != 0 && count != 2) return false;  // a saddle
  const double u_cross = count ? trace_crossing(points[0], points[1], 0, g.at(v, 1)) : none;
  const double v_cross = count ? trace_crossing(points[0], points[1], 1, g.at(u, 1)) : none;
  return g.set_line(u, 1, side, u_cross) && g.set_line(v, side, 1, v_cross);
}

// The line through the centre along a, between the centres of the faces
// across a: crossed halfway between the crossings of a pair of face lines
// parallel to it, when its ends differ.
bool split_centre_line(split_grid_t& g, int a) {
  double t = none;
  if (g.state(on_axes(a, 0, 1, 1)) != g.state(on_axes(a, 2, 1, 1))) {
    const double pairs[2][2] = {{g.crossing(a, 0, 1), g.crossing(a, 2, 1)}, {g.crossing(a, 1, 0), g.crossing(a, 1, 2)}};
    for (const auto& pair : pairs)
      if (std::isnan(t) && !std::isnan(pair[0]) && !std::isnan(pair[1])) t = (pair[0] + pair[1]) / 2;
    if (std::isnan(t)) return false;
  }
  return g.set_line(a, 1, 1, t);
}

// For each edge: its axis, the two axes across it, and the offsets of its
// low corner on those two; plans are made for every collapse a step tries.
struct edge_place_t {
  int a, a1, a2, o1, o2;
};

constexpr std::array<edge_place_t, 12> edge_places = [] {
  std::array<edge_place_t, 12> places{};
  for (int e = 0; e < 12; ++e) {
    const int a = edge_axis(e), a1 = axis_after(a), a2 = axis_before(a), low = edge_low_corner(e);
    places[e] = {a, a1, a2, (low >> a1) & 1, (low >> a2) & 1};
  }
  return places;
}();

child_plan_t child_of(const split_grid_t& g, int k) {
  const std::array<int, 3> base = {k & 1, (k >> 1) & 1, (k >> 2) & 1};
  child_plan_t child{0, {}};
  for (int c = 0; c < 8; ++c)
    child.corners = with_corner(child.corners, c,
                                g.state(point(base[0] + (c & 1), base[1] + ((c >> 1) & 1), base[2] + ((c >> 2) & 1))));
  for (int e = 0; e < 12; ++e) {
    const edge_place_t& p = edge_places[e];
    child.tips[e] = g.tip(p.a, base[p.a], base[p.a1] + p.o1, base[p.a2] + p.o2);
  }
  return child;
}

// Every crossing edge of every child has its tip, and no other edge has one.
bool consistent(const std::array<child_plan_t, 8>& children) {
  for (const child_plan_t& c : children)
    for (int e = 0; e < 12; ++e)
      if (edge_has_crossing(edge_code(c.corners, e)) == std::isnan(c.tips[e])) return false;
  return true;
}

cell_t cell_of(const cube_node_t& node) { return {{node.x, node.y, node.z}, node.depth()}; }

bool tips_match(const std::array<double, 12>& planned, const cube_node_t::tips_t& actual) {
  for (int e = 0; e < 12; ++e) {
    const double a = actual[e].load(), p = planned[e];
    if (std::isnan(a) != std::isnan(p) || (!std::isnan(a) && !(std::abs(a - p) <= 1e-9))) return false;
  }
  return true;
}

bool child_matches(const child_plan_t& planned, const std::shared_ptr<cube_node_t>& child,
                   const cbtr_attachment_t* attachment) {
  if (!child) return is_uniform_corner_word(planned.corners);
  return (child->kind & kind_leaf) && child->attachment == attachment && child->corners == planned.corners &&
         tips_match(planned.tips, child->tips);
}

}  // namespace

std::optional<std::array<child_plan_t, 8>> plan_split(const cell_t& cell, std::uint32_t word,
                                                      const cube_node_t::tips_t& tips, std::uint32_t mode) {
  split_grid_t g(cell, mode);
  if (!split_edges(g, word, tips)) return std::nullopt;
  for (int n = 0; n < 3; ++n)
    for (int side : {0, 2})
      if (!split_face(g, n, side)) return std::nullopt;
  for (int a = 0; a < 3; ++a)
    if (!split_centre_line(g, a)) return std::nullopt;
  std::array<child_plan_t, 8> children;
  for (int k = 0; k < 8; ++k) children[k] = child_of(g, k);
  if (!consistent(children)) return std::nullopt;
  return children;
}

bool split_leaf(const std::shared_ptr<cube_node_t>& leaf, std::uint32_t mode) {
  if (leaf->depth() >= max_depth) return false;
  const cell_t cell = cell_of(*leaf);
  const auto plan = plan_split(cell, leaf->corners, leaf->tips, mode);
  if (!plan) return false;
  auto children = std::make_shared<cube_node_t::children_t>();
  for (int k = 0; k < 8; ++k) {
    if (is_uniform_corner_word((*plan)[k].corners)) continue;
    const cell_t c = cell.child(k);
    auto child = std::make_shared<cube_node_t>(leaf, c.centre[0], c.centre[1], c.centre[2]);
    child->kind = kind_leaf;
    child->corners = (*plan)[k].corners;
    for (int e = 0; e < 12; ++e) child->tips[e] = (*plan)[k].tips[e];
    child->attachment = leaf->attachment;
    (*children)[k].store(std::move(child));
  }
  leaf->children.store(std::move(children));
  leaf->kind = kind_branch;
  return true;
}

bool try_collapse(cube_node_t& branch, std::uint32_t mode, const child_snapshot_t& children) {
  const auto plan = plan_split(cell_of(branch), branch.corners, branch.tips, mode);
  if (!plan) return false;
  for (int k = 0; k < 8; ++k)
    if (!child_matches((*plan)[k], children[k], branch.attachment)) return false;
  branch.kind = kind_leaf;
  branch.children.store(nullptr);
  return true;
}

}  // namespace cbtr
