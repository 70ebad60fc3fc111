#include "cbtr/tool/convex_sweep.h"

#include <cmath>
#include <unordered_map>

#include "cbtr/tool/exact_pose.h"
#include "cbtr/tool/pose_rotation.h"
#include "cbtr/tool/stationary_tris.h"
#include "geom/topo/wrap_convex_hull.h"

namespace cbtr {

namespace {

using mesh_point_t = geom::topo_point3<double>;
using geom::hull_seed_t;

constexpr std::uint32_t not_in = UINT32_MAX;

// The plane of a tool triangle in the tool's frame, unit normal and offset
// rounded so that the triangles of one flat face share it.
using plane_key_t = std::array<std::int64_t, 4>;

struct plane_key_hash {
  std::size_t operator()(const plane_key_t& k) const {
    std::size_t h = 0;
    for (std::int64_t v : k) h = h * 0x100000001b3ULL ^ static_cast<std::size_t>(v);
    return h;
  }
};

plane_key_t plane_key(const geom::vec3d& n, const geom::vec3d& p) {
  constexpr double scale = 1e6;
  return {std::llround(n.x * scale), std::llround(n.y * scale), std::llround(n.z * scale),
          std::llround((n.x * p.x + n.y * p.y + n.z * p.z) * scale)};
}

// A triangle seeds a pose only where each corner moves clearly away from it
// (start) or into it (end): near the silhouette, a neighbour's copy at the
// other pose can stand out of the triangle's plane.
constexpr double seed_margin = 0.25;

// Which poses a triangle has all three corners in at.
constexpr unsigned start_bit = 1;
constexpr unsigned end_bit = 2;

struct seed_candidate_t {
  hull_seed_t at_start;
  hull_seed_t at_end;
  unsigned poses;
  plane_key_t plane;
};

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
  double speed;  // length of motion
  std::uint32_t start_index = not_in;
  std::uint32_t end_index = not_in;
};

double dot_d(const geom::vec3d& a, const geom::vec3d& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

class hull_points_collector {
 public:
  hull_points_collector(const geom::mat4d& start, const geom::mat4d& end, double resolution, std::size_t points)
      : _start(start), _end(end), _resolution(resolution) {
    _sweep.reserve(points);
    _index.reserve(points);
    _points.reserve(points);
    _candidates.reserve(2 * points);
  }

  // Lets the triangle's corners in as its normal and their motion say, and
  // keeps it as a seed at a pose where all three went in.
  void add(geom::topo_tri3<double>& t) {
    const geom::vec3d n = t.get_normal();
    const geom::vec3d n_s = rotated(_start, n);
    const geom::vec3d n_e = rotated(_end, n);
    seed_candidate_t seed{};
    int starts = 0, ends = 0, clear_starts = 0, clear_ends = 0;
    const std::array<mesh_point_t*, 3> corners = t.corners();
    for (int k = 0; k < 3; ++k) {
      sweep_point_t& s = _sweep_point(corners[k]);
      const double along_s = dot_d(s.motion, n_s), along_e = dot_d(s.motion, n_e);
      if (along_s < 0) seed.at_start[starts++] = _enter(s.at_start, s.start_index);
      if (along_e > 0) seed.at_end[ends++] = _enter(s.at_end, s.end_index);
      clear_starts += along_s < -seed_margin * s.speed;
      clear_ends += along_e > seed_margin * s.speed;
    }
    // A triangle without a normal lets nothing in and groups with nothing.
    if (!std::isfinite(n.x) || !std::isfinite(n.y) || !std::isfinite(n.z)) return;
    seed.poses = (clear_starts == 3 ? start_bit : 0) | (clear_ends == 3 ? end_bit : 0);
    seed.plane = plane_key(n, corners[0]->pos());
    _candidates.push_back(seed);
  }

  // A flat face of the tool seeds a pose only whole. Part of a face is no
  // face of the hull when the face's other corners swing out of its plane,
  // and a wrong seed costs a second wrapping without any.
  std::vector<hull_seed_t> seeds() const {
    std::unordered_map<plane_key_t, unsigned, plane_key_hash> whole;
    for (const seed_candidate_t& c : _candidates) {
      auto [it, fresh] = whole.try_emplace(c.plane, c.poses);
      if (!fresh) it->second &= c.poses;
    }
    std::vector<hull_seed_t> out;
    for (const seed_candidate_t& c : _candidates) {
      const unsigned poses = whole.at(c.plane);
      if (poses & start_bit) out.push_back(c.at_start);
      if (poses & end_bit) out.push_back(c.at_end);
    }
    return out;
  }

  const std::vector<geom::vec3fr>& points() const { return _points; }

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
      s.speed = std::sqrt(dot_d(s.motion, s.motion));
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
  std::vector<seed_candidate_t> _candidates;
};

}  // namespace

tool_tris_t build_convex_sweep(geom::topo_stl3d& mesh, const geom::mat4d& start, const geom::mat4d& end,
                               double resolution) {
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
