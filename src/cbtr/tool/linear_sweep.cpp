#include "cbtr/tool/linear_sweep.h"

#include <cstdint>
#include <cstring>
#include <functional>
#include <unordered_map>

#include "cbtr/tool/point_cache.h"

namespace cbtr {

namespace {

using point_t = geom::topo_stl3wfr_t::point_t;
using line_t = geom::topo_stl3wfr_t::line_t;
using tri_t = geom::topo_stl3wfr_t::tri_t;

// Where a triangle of the tool stands in the sweep.
enum class side_t : std::uint8_t { start = 1, end = 4 };

// FNV-1a over the pointer's bytes.
struct pointer_fnv {
  std::size_t operator()(const tri_t* t) const {
    unsigned char bytes[sizeof t];
    std::memcpy(bytes, &t, sizeof t);
    std::uint64_t h = 0xcbf29ce484222325ULL;
    for (unsigned char b : bytes) h = (h ^ b) * 0x100000001b3ULL;
    return static_cast<std::size_t>(h);
  }
};

class linear_sweep_builder {
 public:
  linear_sweep_builder(geom::topo_stl3wfr_t& mesh, const exact_pose_t& start, const exact_pose_t& end)
      : _mesh(mesh),
        _start(start),
        _end(end),
        _at_start(mesh.points_size(), [this](const point_t& p) { return transform(_start, p.pos); }),
        _at_end(mesh.points_size(), [this](const point_t& p) { return transform(_end, p.pos); }) {
    _turned = turns(end);
    if (!_turned) mesh.ensure_integer_normals();
    _motion = translation_of(end) - translation_of(start);
    for (geom::fr* c : {&_motion.x, &_motion.y, &_motion.z}) c->pack();
    _sides.reserve(mesh.tris_size());
    _out.reserve(2 * mesh.tris_size());
  }

  tool_tris_t run() {
    for (tri_t* t = _mesh.tri_stock().first(); t; t = t->next) _place_face(*t);
    _mesh.line_stock().for_each([&](const line_t* e) { _rule_silhouette(*e); });
    return std::move(_out);
  }

 private:
  // A face whose normal meets the motion at a right angle counts as front.
  void _place_face(const tri_t& t) {
    const geom::vec3fr& a = _at_end(t.p[0]);
    const geom::vec3fr& b = _at_end(t.p[1]);
    const geom::vec3fr& c = _at_end(t.p[2]);
    // A pure translation keeps the mesh's own normals.
    if (!_turned && t.integer_normal.x.is_nan()) return;
    geom::vec3fr n = _turned ? reduced_cross(a, b, c) : t.integer_normal;
    if (is_zero(n)) return;
    const bool front = dot(n, _motion).sign() >= 0;
    tool_tri_t& out =
        front ? _out.emplace_back(make_tool_tri(a, b, c, n))
              : _out.emplace_back(make_tool_tri(_at_start(t.p[0]), _at_start(t.p[1]), _at_start(t.p[2]), n));
    out.unit_normal = unit_of(out.normal);
    _sides.emplace(&t, front ? side_t::end : side_t::start);
  }

  // Only a line whose own face is at the end and whose twin's face is at
  // the start goes on: so each silhouette edge is taken once, and in the
  // direction that makes the ruled faces point outward.
  void _rule_silhouette(const line_t& e) {
    if (!e.tri || !e.twin || !e.twin->tri) return;
    if (_side_of(e.tri) != side_t::end || _side_of(e.twin->tri) != side_t::start) return;
    // Never zero: both faces at an edge along the motion are edge-on to it,
    // so such an edge is no silhouette.
    geom::vec3fr m = cross(_turned ? rotate(_end, e.vector()) : e.vector(), _motion);
    for (geom::fr* c : {&m.x, &m.y, &m.z}) c->pack();
    const geom::vec3fr& a_s = _at_start(e.p0);
    const geom::vec3fr& b_s = _at_start(e.p1);
    const geom::vec3fr& a_e = _at_end(e.p0);
    const geom::vec3fr& b_e = _at_end(e.p1);
    tool_tri_t& first = _out.emplace_back(make_tool_tri(a_s, b_s, a_e, m));
    first.unit_normal = unit_of(first.normal);
    _out.push_back(make_tool_tri(b_s, b_e, a_e, first.normal));
    _out.back().unit_normal = first.unit_normal;
  }

  // Triangles left out as degenerate have no side.
  side_t _side_of(const tri_t* t) const {
    const auto it = _sides.find(t);
    return it == _sides.end() ? side_t{} : it->second;
  }

  using convert_t = std::function<geom::vec3fr(const point_t&)>;

  geom::topo_stl3wfr_t& _mesh;
  const exact_pose_t& _start;
  const exact_pose_t& _end;
  point_cache<point_t, convert_t> _at_start;
  point_cache<point_t, convert_t> _at_end;
  bool _turned;
  geom::vec3fr _motion;
  std::unordered_map<const tri_t*, side_t, pointer_fnv> _sides;
  tool_tris_t _out;
};

}  // namespace

tool_tris_t build_linear_sweep(geom::topo_stl3wfr_t& mesh, const exact_pose_t& start, const exact_pose_t& end) {
  return linear_sweep_builder(mesh, start, end).run();
}

}  // namespace cbtr
