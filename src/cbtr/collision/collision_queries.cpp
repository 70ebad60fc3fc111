#include "cbtr/collision/collision_queries.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_set>
#include <utility>

#include "cbtr/collision/tri_contact.h"
#include "cbtr/model/cell_surface.h"

namespace cbtr {

namespace {

using point = std::array<double, 3>;

constexpr double sqrt3 = 1.7320508075688772;
constexpr double coarse_enough = 5.464101615137754;  // 2 + 2 sqrt 3, squared model units
constexpr double minus_inf = -std::numeric_limits<double>::infinity();

// Half-edge of a node of level L in model units; level -1 is twice the root.
double half_edge(int level) { return std::ldexp(65536.0, -level); }

point model_centre(std::uint32_t x, std::uint32_t y, std::uint32_t z) {
  return {lattice_to_model(x), lattice_to_model(y), lattice_to_model(z)};
}

corners3_t corners_of(const double* tri) {
  return {{{tri[0], tri[1], tri[2]}, {tri[3], tri[4], tri[5]}, {tri[6], tri[7], tri[8]}}};
}

// Triangle pairs already tested, by the A item (triangle or stock cell) and
// the B triangle.
class visited_t {
 public:
  explicit visited_t(std::size_t hint) { _set.reserve(hint); }
  bool first_time(const void* a, const void* b) { return _set.emplace(a, b).second; }

 private:
  struct hash_t {
    std::size_t operator()(const std::pair<const void*, const void*>& p) const {
      const auto a = reinterpret_cast<std::uintptr_t>(p.first), b = reinterpret_cast<std::uintptr_t>(p.second);
      return std::hash<std::uintptr_t>()(a * 0x9E3779B97F4A7C15ull ^ b);
    }
  };
  std::unordered_set<std::pair<const void*, const void*>, hash_t> _set;
};

// The B side: its nodes and triangles seen in A's frame.
struct b_side_t {
  const geom::mat4d& m;

  point centre(const tri_node_t& n) const {
    const point c = model_centre(n.ix, n.iy, n.iz);
    const geom::vec3d p = m.apply({c[0], c[1], c[2]});
    return {p.x, p.y, p.z};
  }
  corners3_t placed(const tri_sat_t& s) const {
    corners3_t t = corners_of(s.tri);
    for (point& p : t) {
      const geom::vec3d q = m.apply({p[0], p[1], p[2]});
      p = {q.x, q.y, q.z};
    }
    return t;
  }
};

// A triangle tree on the A side.
struct tri_side_t {
  using node_ref = const tri_node_t*;

  static point centre(node_ref n) { return model_centre(n->ix, n->iy, n->iz); }
  static bool is_leaf(node_ref n) { return n->is_leaf(); }
  static bool is_uniform(node_ref) { return false; }
  static std::array<node_ref, 8> children(node_ref n) {
    std::array<node_ref, 8> out;
    for (int k = 0; k < 8; ++k) out[k] = n->child[k].get();
    return out;
  }
  static bool touches(node_ref leaf, const tri_sat_t& b, const corners3_t& placed, visited_t& visited) {
    for (const tri_sat_t* a : leaf->tris)
      if (visited.first_time(a, &b) && triangles_touch(corners_of(a->tri), placed)) return true;
    return false;
  }
};

// A stock on the A side: a cell's triangles come from its corners and tips,
// and belong to that cell alone, so the cell stands for them in the pairs.
struct cube_side_t {
  using node_ref = std::shared_ptr<cube_node_t>;

  static point centre(const node_ref& n) { return model_centre(n->x, n->y, n->z); }
  static bool is_leaf(const node_ref& n) { return n->kind & kind_leaf; }
  static bool is_uniform(const node_ref& n) { return n->kind & 3; }
  static std::array<node_ref, 8> children(const node_ref& n) { return snapshot_children(*n); }
  static bool touches(const node_ref& leaf, const tri_sat_t& b, const corners3_t& placed, visited_t& visited) {
    if (!visited.first_time(leaf.get(), &b)) return false;
    for (const cube_tri_t& t : leaf_triangles(*leaf))
      if (triangles_touch(t.v, placed)) return true;
    return false;
  }
};

template <class A>
class pair_walk_t {
 public:
  using a_ref = typename A::node_ref;

  pair_walk_t(const geom::mat4d& m, double clearance, std::size_t hint)
      : _b{m}, _clearance(clearance), _visited(hint) {}

  int flag(const a_ref& a, const tri_node_t& b, int la, int lb, int best) {
    const point d = _delta(a, b);
    const double r = half_edge(lb) * sqrt3 + half_edge(la);
    const double far = std::max({d[0], d[1], d[2]});
    if (far > r + _clearance) return flag_apart;
    const bool apart = far > r;
    if (apart) {
      if (best == flag_near) return flag_near;
      const double q = _clearance - r;
      if (d[0] < q && d[1] < q && d[2] < q) return flag_near;
    }
    if (A::is_uniform(a)) return flag_uniform;
    if (A::is_leaf(a) && b.is_leaf()) return apart ? flag_near : (_leaf_contact(a, b) ? flag_contact : flag_near);
    auto visit = [&](const a_ref& ca, const tri_node_t& cb, int lca, int lcb) {
      best = std::min(best, flag(ca, cb, lca, lcb, best));
      return best == flag_contact;
    };
    return _descend(a, b, la, lb, visit) ? flag_contact : best;
  }

  double dist2(const a_ref& a, const tri_node_t& b, int la, int lb) {
    const point d = _delta(a, b);
    const double r = half_edge(lb) * sqrt3 + half_edge(la);
    double s = 0;
    for (double c : d) s += std::pow(std::max(0.0, c - r), 2);
    if (s > coarse_enough) return s;
    if (A::is_leaf(a) && b.is_leaf()) return s > 0 ? s : (_leaf_contact(a, b) ? minus_inf : 0.0);
    double best = std::numeric_limits<double>::infinity();
    auto visit = [&](const a_ref& ca, const tri_node_t& cb, int lca, int lcb) {
      best = std::min(best, dist2(ca, cb, lca, lcb));
      return best == minus_inf;
    };
    return _descend(a, b, la, lb, visit) ? minus_inf : best;
  }

 private:
  // Visits the pairs one level down, where only a side that is not a leaf
  // descends; stops, and says so, as soon as visit asks to.
  template <typename Visit>
  bool _descend(const a_ref& a, const tri_node_t& b, int la, int lb, Visit&& visit) {
    if (A::is_leaf(a)) {
      for (const auto& cb : b.child)
        if (cb && visit(a, *cb, la, lb + 1)) return true;
      return false;
    }
    for (const a_ref& ca : A::children(a)) {
      if (!ca) continue;
      if (b.is_leaf()) {
        if (visit(ca, b, la + 1, lb)) return true;
        continue;
      }
      for (const auto& cb : b.child)
        if (cb && visit(ca, *cb, la + 1, lb + 1)) return true;
    }
    return false;
  }

  point _delta(const a_ref& a, const tri_node_t& b) const {
    const point ca = A::centre(a), cb = _b.centre(b);
    return {std::abs(cb[0] - ca[0]), std::abs(cb[1] - ca[1]), std::abs(cb[2] - ca[2])};
  }

  bool _leaf_contact(const a_ref& a, const tri_node_t& b) {
    for (const tri_sat_t* s : b.tris)
      if (A::touches(a, *s, _b.placed(*s), _visited)) return true;
    return false;
  }

  b_side_t _b;
  double _clearance;
  visited_t _visited;
};

}  // namespace

int collision_flag(const tri_tree_t& a, const tri_tree_t& b, const geom::mat4d& m, double clearance,
                   std::size_t pair_hint) {
  pair_walk_t<tri_side_t> walk(m, clearance, pair_hint);
  return walk.flag(&a.root, b.root, 0, 0, flag_apart);
}

double at_least_distance(const tri_tree_t& a, const tri_tree_t& b, const geom::mat4d& m, std::size_t pair_hint) {
  pair_walk_t<tri_side_t> walk(m, 0.0, pair_hint);
  const double s = walk.dist2(&a.root, b.root, -1, -1);
  return s < 0 ? minus_inf : std::sqrt(s);
}

int collision_flag(const cube_tree_t& a, const tri_tree_t& b, const geom::mat4d& m, double clearance,
                   std::size_t pair_hint) {
  const std::shared_ptr<cube_node_t> root = a.root.load();
  if (!root) return flag_apart;
  pair_walk_t<cube_side_t> walk(m, clearance, pair_hint);
  return walk.flag(root, b.root, 0, 0, flag_apart);
}

}  // namespace cbtr
