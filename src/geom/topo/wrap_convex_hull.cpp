#include "geom/topo/wrap_convex_hull.h"

#include <optional>
#include <unordered_map>

#include "geom/topo/hull_face.h"
#include "geom/topo/hull_point_tree.h"
#include "geom/topo/hull_start.h"

namespace geom {

namespace {

using point_t = topo_stl3wfr_t::point_t;
using line_t = topo_stl3wfr_t::line_t;
using tri_t = topo_stl3wfr_t::tri_t;
using face_tris_t = std::vector<std::array<hull_index_t, 3>>;

// One attempt at the hull. The mesh grows from its triangles' open lines
// (lines without a twin) until none is left. A point takes part in the
// search while it is on no triangle yet or on an open line: a point that
// all its triangles close around is done.
class hull_wrapper {
 public:
  hull_wrapper(const std::vector<hull_point_t>& pts, const hull_point_tree_t& tree)
      : _pts(pts), _tree(tree), _mesh(std::make_unique<topo_stl3wfr_t>(std::vector<topo_stl3wfr_t::exact_tri_t>{})) {
    const std::size_t n = pts.size();
    // A closed hull of n points has at most 2n - 4 triangles and three
    // times as many lines.
    _mesh->reserve_points(n);
    _mesh->line_stock().reserve(6 * n);
    _mesh->tri_stock().reserve(2 * n);
    _mesh_point.assign(n, nullptr);
    _open.assign(n, 0);
  }

  // Seeds first, then the extreme point if no seed was usable. False when
  // the seeds contradict the hull.
  bool run(const std::vector<hull_seed_t>& seeds) {
    for (const hull_seed_t& s : seeds) _add_seed(s);
    if (_mesh->tris_size() == 0 && !_start_from_extreme_point()) return true;
    while (!_queue.empty()) {
      line_t* line = _queue.back();
      _queue.pop_back();
      if (line->twin) continue;
      if (!_close(_index.at(line->p0), _index.at(line->p1))) return false;
    }
    return true;
  }

  std::unique_ptr<topo_stl3wfr_t> take() { return std::move(_mesh); }

  // Whether the closed mesh is the hull: it folds inward at every edge, and
  // no point left off it lies outside a face. A closed surface convex at
  // every edge bounds a convex body, and one that holds all the points with
  // its corners among them is their hull, unless it is flat. A wrong seed that raised no
  // conflict while wrapping is caught here.
  bool is_hull() const {
    std::vector<hull_index_t> off_mesh;
    for (hull_index_t i = 0; i < _pts.size(); ++i)
      if (!_mesh_point[i]) off_mesh.push_back(i);
    // Seeds in one plane close into a flat surface folded onto itself,
    // which bounds nothing: no fold anywhere gives it away.
    bool folds = false;
    for (const tri_t* t = _mesh->tri_stock().first(); t; t = t->next) {
      const hull_point_t& a = _pts[_index.at(t->p[0])];
      const hull_point_t& b = _pts[_index.at(t->p[1])];
      const hull_point_t& c = _pts[_index.at(t->p[2])];
      for (const line_t* line : t->l) {
        const int o = orient3(a, b, c, _pts[_index.at(_far_corner(*line->twin))]);
        if (o > 0) return false;
        folds = folds || o < 0;
      }
      for (hull_index_t p : off_mesh)
        if (orient3(a, b, c, _pts[p]) > 0) return false;
    }
    return folds;
  }

 private:
  // Seeds come here proven faces of the hull, alone in their planes.
  void _add_seed(const hull_seed_t& s) {
    const face_tris_t face = {s};
    if (_conflicts(face)) return;
    _add_face(face);
  }

  // The face of the supporting plane through the extreme point and a hull
  // edge from it. False for a set without volume.
  bool _start_from_extreme_point() {
    const hull_start_t start = find_hull_start(_pts);
    if (!start.found) return false;
    bool flat = true;
    const face_tris_t face = _face_beyond(start.a, start.b, &flat);
    if (face.empty() || flat) return false;
    _add_face(face);
    return true;
  }

  // Closes the open line a -> b with the face on its other side. False when
  // that face would reuse a line that a triangle owns already.
  bool _close(hull_index_t a, hull_index_t b) {
    const face_tris_t face = _face_beyond(a, b, nullptr);
    if (face.empty() || _conflicts(face)) return false;
    _add_face(face);
    return true;
  }

  // Rotates the plane about the edge a b away from the face that owns
  // a -> b until it meets points: the one met first, with every point met
  // at the same time, makes the face (b, a, c, ...). flat, when asked,
  // comes back true if no point at all lies inside that plane. The plane
  // only turns outwards, so a box of points behind it stays behind.
  face_tris_t _face_beyond(hull_index_t a, hull_index_t b, bool* flat) {
    hull_index_t c = 0;
    bool have_c = false;
    std::optional<plane_orient_t> plane;
    std::vector<hull_index_t> coplanar;
    const auto behind = [&](const vec3d& lo, const vec3d& hi) { return plane && plane->surely_behind(lo, hi); };
    const auto passed_over = [&](const vec3d&, const vec3d&) {
      if (flat) *flat = false;
    };
    const vec3d& pa = _pts[a].approx;
    const vec3d& pb = _pts[b].approx;
    const vec3d middle = {(pa.x + pb.x) / 2, (pa.y + pb.y) / 2, (pa.z + pb.z) / 2};
    _tree.walk(
        behind, passed_over,
        [&](hull_index_t p) {
          if (p == a || p == b || _done(p)) return;
          if (!have_c) {
            if (collinear(_pts[a], _pts[b], _pts[p])) {
              coplanar.push_back(p);
            } else {
              c = p, have_c = true;
              plane.emplace(_pts[b], _pts[a], _pts[c]);
            }
            return;
          }
          const int o = (*plane)(_pts[p]);
          if (o > 0) {
            // Points of the old plane lie inside the new one, except those on
            // the line a b, which lie in every plane through it.
            plane.emplace(_pts[b], _pts[a], _pts[p]);
            std::erase_if(coplanar, [&](hull_index_t q) { return (*plane)(_pts[q]) != 0; });
            c = p;
          } else if (o == 0) {
            coplanar.push_back(p);
          } else if (flat) {
            *flat = false;
          }
        },
        middle);
    if (!have_c) return {};
    const vec3fr n = cross(_pts[a].pos - _pts[b].pos, _pts[c].pos - _pts[b].pos);
    coplanar.push_back(c);
    return triangulate_convex(_pts, hull_face_polygon(_pts, b, a, coplanar, n), n);
  }

  // The corner of the line's triangle that is not on the line.
  static const point_t* _far_corner(const line_t& line) {
    const tri_t& t = *line.tri;
    for (int k = 0; k < 3; ++k)
      if (t.l[k] == &line) return t.p[(k + 2) % 3];
    QV_ABORT("wrap_convex_hull: a line is missing from its triangle");
  }

  bool _done(hull_index_t p) const { return _mesh_point[p] && _open[p] == 0; }

  bool _conflicts(const face_tris_t& face) const {
    for (const auto& t : face)
      for (int k = 0; k < 3; ++k) {
        const point_t* p0 = _mesh_point[t[k]];
        const point_t* p1 = _mesh_point[t[(k + 1) % 3]];
        if (p0 && p1 && _mesh->line_stock().find(p0, p1)) return true;
      }
    return false;
  }

  void _add_face(const face_tris_t& face) {
    for (const auto& t : face) {
      std::array<point_t*, 3> p = {_point(t[0]), _point(t[1]), _point(t[2])};
      std::array<line_t*, 3> l = {_line(t[0], t[1]), _line(t[1], t[2]), _line(t[2], t[0])};
      _mesh->tri_stock().add(p, l);
    }
  }

  point_t* _point(hull_index_t i) {
    if (!_mesh_point[i]) {
      vec3fr pos = _pts[i].pos;
      _mesh_point[i] = _mesh->point_at(pos);
      _index.emplace(_mesh_point[i], i);
    }
    return _mesh_point[i];
  }

  // A new line either closes an open twin or is open itself.
  line_t* _line(hull_index_t i, hull_index_t j) {
    line_t* line = _mesh->line_stock().line_at(_mesh_point[i], _mesh_point[j]);
    _mesh->line_stock().link_twin(line);
    const int change = line->twin ? -1 : 1;
    _open[i] += change;
    _open[j] += change;
    if (!line->twin) _queue.push_back(line);
    return line;
  }

  const std::vector<hull_point_t>& _pts;
  const hull_point_tree_t& _tree;
  std::unique_ptr<topo_stl3wfr_t> _mesh;
  std::vector<point_t*> _mesh_point;
  std::unordered_map<const point_t*, hull_index_t> _index;
  std::vector<int> _open;  // open lines at each point
  std::vector<line_t*> _queue;
};

// Whether every point but the seed's own corners lies strictly behind the
// seed's plane: then it is a face of the hull, alone in its plane. Seeds are
// only believed to lie on the hull, and one wrong seed would cost a whole
// second wrapping without any.
bool seed_holds(const std::vector<hull_point_t>& pts, const hull_point_tree_t& tree, const hull_seed_t& s) {
  if (s[0] == s[1] || s[1] == s[2] || s[2] == s[0] || collinear(pts[s[0]], pts[s[1]], pts[s[2]])) return false;
  const plane_orient_t plane(pts[s[0]], pts[s[1]], pts[s[2]]);
  bool holds = true;
  tree.walk([&](const vec3d& lo, const vec3d& hi) { return !holds || plane.surely_behind(lo, hi); },
            [](const vec3d&, const vec3d&) {},
            [&](hull_index_t p) {
              if (p != s[0] && p != s[1] && p != s[2] && plane(pts[p]) >= 0) holds = false;
            },
            pts[s[0]].approx);
  return holds;
}

}  // namespace

std::unique_ptr<topo_stl3wfr_t> wrap_convex_hull(const std::vector<vec3fr>& points,
                                                 const std::vector<hull_seed_t>& seeds) {
  std::vector<hull_point_t> pts;
  pts.reserve(points.size());
  for (const vec3fr& p : points) pts.emplace_back(p);
  const hull_point_tree_t tree(pts);
  std::vector<hull_seed_t> faces;
  for (const hull_seed_t& s : seeds)
    if (seed_holds(pts, tree, s)) faces.push_back(s);
  hull_wrapper seeded(pts, tree);
  if (seeded.run(faces) && (faces.empty() || seeded.is_hull())) return seeded.take();
  hull_wrapper plain(pts, tree);
  QV_CHECK(plain.run({}), "wrap_convex_hull: a face of the exact hull reuses a line");
  return plain.take();
}

}  // namespace geom
