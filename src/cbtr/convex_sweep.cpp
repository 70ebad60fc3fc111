#include "cbtr/convex_sweep.h"

#include <unordered_map>

#include "cbtr/exact_pose.h"
#include "cbtr/stationary_tris.h"
#include "geom/topo/wrap_convex_hull.h"

namespace cbtr {

namespace {

using mesh_point_t = geom::topo_point3<double>;
using geom::hull_seed_t;

constexpr std::uint32_t not_in = UINT32_MAX;

struct exact_point_hash {
  std::size_t operator()(const geom::vec3fr& p) const {
    geom::vec3fr packed = p;
    return geom::hash(packed);
  }
};

// One tool vertex at both poses, and where each copy sits in the hull's
// point list once it has gone in.
struct sweep_point_t {
  geom::vec3fr at_start;
  geom::vec3fr at_end;
  geom::vec3d motion;
  std::uint32_t start_index = not_in;
  std::uint32_t end_index = not_in;
};

geom::vec3d rotated(const geom::mat4d& pose, const geom::vec3d& v) {
  return {pose.m[0] * v.x + pose.m[4] * v.y + pose.m[8] * v.z,
          pose.m[1] * v.x + pose.m[5] * v.y + pose.m[9] * v.z,
          pose.m[2] * v.x + pose.m[6] * v.y + pose.m[10] * v.z};
}

double dot_d(const geom::vec3d& a, const geom::vec3d& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

class hull_points_collector {
 public:
  hull_points_collector(const geom::mat4d& start, const geom::mat4d& end, double resolution,
                        std::size_t points)
      : _start(start), _end(end), _resolution(resolution) {
    _sweep.reserve(points);
    _index.reserve(points);
    _points.reserve(points);
  }

  // Lets the triangle's corners in as its normal and their motion say, and
  // seeds the triangle at a pose where all three went in.
  void add(geom::topo_tri3<double>& t) {
    const geom::vec3d n = t.get_normal();
    const geom::vec3d n_s = rotated(_start, n);
    const geom::vec3d n_e = rotated(_end, n);
    hull_seed_t at_start{}, at_end{};
    int starts = 0, ends = 0;
    const std::array<mesh_point_t*, 3> corners = t.corners();
    for (int k = 0; k < 3; ++k) {
      sweep_point_t& s = _sweep_point(corners[k]);
      if (dot_d(s.motion, n_s) < 0) at_start[starts++] = _enter(s.at_start, s.start_index);
      if (dot_d(s.motion, n_e) > 0) at_end[ends++] = _enter(s.at_end, s.end_index);
    }
    if (starts == 3) _seeds.push_back(at_start);
    if (ends == 3) _seeds.push_back(at_end);
  }

  const std::vector<geom::vec3fr>& points() const { return _points; }
  const std::vector<hull_seed_t>& seeds() const { return _seeds; }

 private:
  sweep_point_t& _sweep_point(const mesh_point_t* v) {
    auto [it, fresh] = _sweep.try_emplace(v);
    if (fresh) {
      sweep_point_t& s = it->second;
      s.at_start = snap(_start.apply(v->pos()), _resolution);
      s.at_end = snap(_end.apply(v->pos()), _resolution);
      const geom::vec3d qs = geom::to_vec3d(s.at_start);
      const geom::vec3d qe = geom::to_vec3d(s.at_end);
      s.motion = {qe.x - qs.x, qe.y - qs.y, qe.z - qs.z};
    }
    return it->second;
  }

  // Two vertices may snap to one exact point: it goes in once.
  std::uint32_t _enter(const geom::vec3fr& p, std::uint32_t& index) {
    if (index == not_in) {
      auto [it, fresh] = _index.try_emplace(p, static_cast<std::uint32_t>(_points.size()));
      if (fresh) _points.push_back(p);
      index = it->second;
    }
    return index;
  }

  const geom::mat4d& _start;
  const geom::mat4d& _end;
  double _resolution;
  std::unordered_map<const mesh_point_t*, sweep_point_t> _sweep;
  std::unordered_map<geom::vec3fr, std::uint32_t, exact_point_hash> _index;
  std::vector<geom::vec3fr> _points;
  std::vector<hull_seed_t> _seeds;
};

}  // namespace

tool_tris_t build_convex_sweep(geom::topo_stl3d& mesh, const geom::mat4d& start,
                               const geom::mat4d& end, double resolution) {
  // Without motion no vertex faces either way and none would go in.
  if (start.m == end.m) return build_stationary(mesh, end, resolution);
  hull_points_collector collector(start, end, resolution, mesh.point_count());
  for (geom::topo_tri3<double>& t : mesh.tris()) collector.add(t);
  const auto hull = geom::wrap_convex_hull(collector.points(), collector.seeds());
  tool_tris_t out;
  out.reserve(hull->tris_size());
  for (const auto* t = hull->tri_stock().first(); t; t = t->next) {
    const geom::vec3fr& a = t->p[0]->pos;
    const geom::vec3fr& b = t->p[1]->pos;
    const geom::vec3fr& c = t->p[2]->pos;
    out.push_back(make_tool_tri(a, b, c, reduced_cross(a, b, c)));
  }
  return out;
}

}  // namespace cbtr
