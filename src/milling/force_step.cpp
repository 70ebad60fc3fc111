#include "milling/force_step.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "geom/mat4d.h"
#include "milling/angles.h"
#include "milling/edge_frames.h"

namespace mech {

namespace {

constexpr double pi = std::numbers::pi;

// One edge element in contact at one sample.
struct contact_t {
  std::size_t flute;
  std::size_t k;     // sample
  double phi;        // angle of the element
  double cp;         // its cosine
  double sp;         // and sine
  geom::vec3d p;     // its position
  geom::vec3d e[3];  // local axes: into the surface, along the turn, across
  double h;          // chip thickness
  double area;       // chip area
  double ds;         // edge length
  double arc;        // arc length of one sample at this radius
  double radius;
  double inclination;  // model 5: the edge's angle against the tool axis
  bool bottom;
};

// What a slice of one flute gathers over its samples.
struct slice_sums_t {
  double arc = 0;
  double pressure = 0;
};

double dot3(const geom::vec3d& a, const geom::vec3d& b) { return geom::dot(a, b); }

geom::vec3d along(const coeff3_t& f, const geom::vec3d& x, const geom::vec3d& y, const geom::vec3d& z) {
  return x * f[0] + y * f[1] + z * f[2];
}

coeff3_t times(const coeff3_t& k, double s) { return {k[0] * s, k[1] * s, k[2] * s}; }

class force_run_t {
 public:
  force_run_t(const milling_physics_session_t& session, const milling_force_input_t& in, std::span<double> cut,
              std::span<double> edge, std::span<double> moments)
      : _s(session), _in(in), _cut(cut), _edge(edge), _moments(moments) {
    for (int i = 0; i < 16; ++i) _motion.m[i] = in.pose_cur[i] - in.pose_prev[i];
    _dtheta = 2 * pi / in.samples;
    _turns.resize(std::size_t(in.samples));
    for (std::size_t k = 0; k < _turns.size(); ++k)
      _turns[k] = {std::cos(-double(k) * _dtheta), std::sin(-double(k) * _dtheta)};
    _feed = _motion.apply({0, 0, session.feed_ref_z});
    _max_flank = -std::numeric_limits<double>::infinity();
    // A feed per tooth that is not a number poisons every force of the step.
    const double per_tooth = 2 * pi * in.feed / (double(session.flutes.size()) * in.omega);
    const double start = std::isfinite(per_tooth) ? 0.0 : std::numeric_limits<double>::quiet_NaN();
    for (std::span<double> a : {cut, edge, moments}) std::fill(a.begin(), a.end(), start);
  }

  void side_pass(const engagement_t& e);
  void bottom_pass(const engagement_t& e);
  void write_output(std::span<double> out) const;

 private:
  const milling_physics_session_t& _s;
  const milling_force_input_t& _in;
  std::span<double> _cut, _edge, _moments;
  geom::mat4d _motion{};
  geom::vec3d _feed{};
  double _dtheta = 0;
  struct turn_t {
    double c;
    double s;
  };
  std::vector<turn_t> _turns;  // cosine and sine of each sample's turn, -k dtheta

  double _max_chip = 0, _max_chip_normal = 0, _sum_ds = 0, _sum_normal = 0, _power = 0, _sum_area = 0;
  double _removal = 0, _arc_mean_sum = 0, _max_arc = 0, _max_pressure = 0, _max_flank;
  std::size_t _arc_slices = 0;

  // Calls fn(k, phi, cos phi, sin phi) for every sample k whose element, at
  // angle theta turned by -k dtheta, lies in the ranges. The sines come from
  // the samples' own by the sum formulas: the step spends most of its time
  // in them otherwise.
  template <class Fn>
  void for_each_engaged_sample(double theta, const std::vector<angle_range_t>& ranges, Fn fn) const {
    const double ct = std::cos(theta), st = std::sin(theta);
    for (std::size_t k = 0; k < _turns.size(); ++k) {
      const double phi = wrap_angle(theta - double(k) * _dtheta);
      if (!in_ranges(ranges, phi)) continue;
      const turn_t& x = _turns[k];
      fn(k, phi, ct * x.c - st * x.s, st * x.c + ct * x.s);
    }
  }
  double side_chip(const flute_t& flute, const edge_point_t& mid, double cp, double sp, double z, double r_prev) const;
  void side_slice(std::size_t f, const engagement_slice_t& slice);
  void bottom_ring(std::size_t f, const engagement_slice_t& ring);
  void add_contact(const contact_t& c, const edge_frame_t& reference, slice_sums_t& sums);
  void end_slice(const slice_sums_t& sums);
};

// The chip a side element cuts: from where the ray out to it crosses the
// previous pass's flank, at radius r_prev, to the element itself.
double force_run_t::side_chip(const flute_t& flute, const edge_point_t& mid, double cp, double sp, double z,
                              double r_prev) const {
  double h = 0;
  const double cx = _feed.x, cy = _feed.y;
  const double qx = mid.r * cp, qy = mid.r * sp;
  const double qq = qx * qx + qy * qy;
  const double b = 2 * (cx * qx + cy * qy);
  const double disc = b * b - 4 * qq * (cx * cx + cy * cy - r_prev * r_prev);
  if (r_prev == 0 || disc < 0) {
    h = mid.r;
  } else if (disc > 0) {
    const double t1 = (-b - std::sqrt(disc)) / (2 * qq);
    const double t2 = (-b + std::sqrt(disc)) / (2 * qq);
    const double q = std::sqrt(qq);
    if (t2 >= 0 && t2 <= 1) {
      h = mid.r - std::abs(t2) * q;
    } else if (t1 >= 0 && t1 <= 1) {
      h = mid.r - std::abs(t1) * q;
    }
  }
  h = std::max(h, 0.0);
  // Below the last pass's tip only the step of the edge's first record is cut.
  if (z < -_feed.z) h = std::min(h, std::abs(mid.r - flute.side_edge.front().r));
  return h;
}

void force_run_t::side_pass(const engagement_t& e) {
  for (std::size_t f = 0; f < _s.flutes.size(); ++f) {
    const flute_t& flute = _s.flutes[f];
    if (flute.side_edge.empty()) continue;
    for (const engagement_slice_t& slice : e.side) {
      if (slice.pos < flute.z_min || slice.pos > flute.z_max || slice.pos > _in.max_z) continue;
      side_slice(f, slice);
    }
  }
}

void force_run_t::side_slice(std::size_t f, const engagement_slice_t& slice) {
  const flute_t& flute = _s.flutes[f];
  const double z = slice.pos, dz = slice.step;
  const std::optional<edge_point_t> before = edge_within(flute.side_edge, &edge_point_t::z, z + _feed.z);
  const double r_prev = before ? before->r : 0.0;
  const edge_point_t mid = edge_at(flute.side_edge, &edge_point_t::z, z);
  const edge_point_t lo = edge_at(flute.side_edge, &edge_point_t::z, z - dz / 2);
  const edge_point_t up = edge_at(flute.side_edge, &edge_point_t::z, z + dz / 2);
  const double alpha = std::atan2(up.z - lo.z, up.r - lo.r);
  // The edge length has no radial term: a tapered flank counts its height.
  const double ds = std::hypot(up.z - lo.z, (up.theta - lo.theta) * (up.r + lo.r) / 2);
  const edge_frame_t frame = side_frame(lo, up, _in.flank_flag != 0, _s.flank_angle);
  const double sa = std::sin(alpha), ca = std::cos(alpha);
  slice_sums_t sums;
  for_each_engaged_sample(mid.theta, slice.ranges, [&](std::size_t k, double phi, double cp, double sp) {
    contact_t c{.flute = f,
                .k = k,
                .phi = phi,
                .cp = cp,
                .sp = sp,
                .p = {mid.r * cp, mid.r * sp, z},
                .e = {{-sa * cp, -sa * sp, -ca}, {-sp, cp, 0}, {ca * cp, ca * sp, -sa}},
                .h = side_chip(flute, mid, cp, sp, z, r_prev),
                .area = 0,
                .ds = ds,
                .arc = mid.r * _dtheta,
                .radius = mid.r,
                .inclination = alpha - pi / 2,
                .bottom = false};
    c.area = dz * c.h;
    add_contact(c, frame, sums);
  });
  end_slice(sums);
}

void force_run_t::bottom_pass(const engagement_t& e) {
  if (!(_feed.z < 0)) return;  // only a plunging tool cuts with its bottom
  for (std::size_t f = 0; f < _s.flutes.size(); ++f) {
    const flute_t& flute = _s.flutes[f];
    if (!flute.has_bottom || flute.bottom_edge.empty()) continue;
    for (const engagement_slice_t& ring : e.bottom) {
      if (ring.pos >= flute.bottom_edge.front().r && ring.pos <= flute.bottom_edge.back().r) bottom_ring(f, ring);
    }
  }
}

void force_run_t::bottom_ring(std::size_t f, const engagement_slice_t& ring) {
  const flute_t& flute = _s.flutes[f];
  const double r = ring.pos, dr = ring.step;
  const edge_point_t mid = edge_at(flute.bottom_edge, &edge_point_t::r, r);
  const edge_point_t lo = edge_at(flute.bottom_edge, &edge_point_t::r, r - dr / 2);
  const edge_point_t up = edge_at(flute.bottom_edge, &edge_point_t::r, r + dr / 2);
  const edge_frame_t frame = bottom_frame(lo, up, mid.rake, _in.flank_flag != 0, _s.flank_angle);
  slice_sums_t sums;
  for_each_engaged_sample(mid.theta, ring.ranges, [&](std::size_t k, double phi, double cp, double sp) {
    const geom::vec3d p{mid.r * cp, mid.r * sp, 0};
    const double h = -_motion.apply(p).z;  // how far the point plunges
    add_contact({.flute = f,
                 .k = k,
                 .phi = phi,
                 .cp = cp,
                 .sp = sp,
                 .p = p,
                 .e = {{0, 0, -1}, {-sp, cp, 0}, {cp, sp, 0}},
                 .h = h,
                 .area = h * dr,
                 .ds = dr,
                 .arc = r * _dtheta,
                 .radius = mid.r,
                 .inclination = 0,
                 .bottom = true},
                frame, sums);
  });
  end_slice(sums);
}

void force_run_t::add_contact(const contact_t& c, const edge_frame_t& reference, slice_sums_t& sums) {
  const edge_frame_t fr = rotate_z(reference, _turns[c.k].c, _turns[c.k].s);
  const geom::vec3d turn{c.sp, -c.cp, 0};
  const geom::vec3d v = _motion.apply(c.p) * (1.0 / _in.dt) + turn * (c.radius * _in.omega);
  const geom::vec3d vl{dot3(fr.t, v), dot3(fr.c, v), dot3(fr.b, v)};
  const double q = dot3(fr.b, turn);
  const double an = q > 0 ? c.area / q : 0.0;
  const double hn = q > 0 ? c.h / q : 0.0;
  const double fade = c.h < _s.min_chip ? c.h / _s.min_chip : 1.0;
  const cutting_coefficients_t& k = _s.coefficients;
  geom::vec3d fc{}, fe{};
  if (k.model() != 5) {
    const kc_ke_t kk = k.for_edge(c.flute, vl);
    const coeff3_t cut = times(kk.kc, an);
    const coeff3_t edge = times(kk.ke, c.ds * fade);
    fc = along(cut, fr.t, fr.c, fr.b);
    fe = along(edge, fr.t, fr.c, fr.b);
    const double tang = -(cut[2] + edge[2]);
    _power += std::max(tang, 0.0) * std::hypot(vl.x, vl.y);
    if (c.h > _in.pressure_min_chip) {
      const double p = tang / an;
      if (std::isfinite(p)) sums.pressure += std::max(p * c.arc, 0.0);
    }
  } else {
    coeff3_t cut = times(c.bottom ? k.bottom_kc(c.flute) : k.tooth_kc(c.flute, c.phi, c.inclination), an);
    coeff3_t edge = times(k.model5_ke(), c.ds);
    if (_in.sign_flag == 0) {
      cut[1] = -cut[1];
      edge[1] = -edge[1];
    }
    fc = along(cut, c.e[0], c.e[1], c.e[2]);
    fe = along(edge, c.e[0], c.e[1], c.e[2]) * fade;
  }
  const geom::vec3d total = fc + fe;
  const geom::vec3d moment = geom::cross(c.p, total) * 0.001;
  double* at[3] = {&_cut[3 * c.k], &_edge[3 * c.k], &_moments[3 * c.k]};
  const geom::vec3d* add[3] = {&fc, &fe, &moment};
  for (int i = 0; i < 3; ++i) {
    at[i][0] += add[i]->x;
    at[i][1] += add[i]->y;
    at[i][2] += add[i]->z;
  }
  _max_chip = std::max(_max_chip, c.h);
  _max_chip_normal = std::max(_max_chip_normal, hn);
  _sum_ds += c.ds;
  _sum_normal += dot3(total, c.e[0]);
  _sum_area += an;
  if (c.h > _s.min_chip) _removal += c.area * c.arc;
  sums.arc += c.arc;
  if (_in.flank_flag != 0 && dot3(c.e[0], v) * _in.dt > 1e-6) _max_flank = std::max(_max_flank, dot3(fr.s, v));
}

void force_run_t::end_slice(const slice_sums_t& sums) {
  _max_arc = std::max(_max_arc, sums.arc);
  _max_pressure = std::max(_max_pressure, sums.pressure);
  if (sums.arc != 0) {
    _arc_mean_sum += sums.arc;
    ++_arc_slices;
  }
}

void force_run_t::write_output(std::span<double> out) const {
  const double n = double(_s.flutes.size()) * _in.samples;
  double chip_normal = _max_chip;
  if (_s.coefficients.model() <= 2) {
    const coeff3_t kc = _s.coefficients.for_edge(0, {}).kc;
    const double v = -kc[2] / kc[1] * _max_chip_normal;
    if (v > 0) chip_normal = v;
  }
  const double values[MILLING_FORCE_OUTPUT_COUNT] = {_max_chip,
                                                     chip_normal,
                                                     _sum_ds / n,
                                                     _sum_normal / n,
                                                     _power * 0.001 * _s.power_factor / _in.samples,
                                                     _sum_area / n,
                                                     _removal / double(_s.flutes.size()),
                                                     _arc_slices ? _arc_mean_sum / double(_arc_slices) : 0.0,
                                                     _max_arc,
                                                     _max_pressure,
                                                     _in.flank_flag != 0 ? _max_flank : 0.0};
  std::copy(std::begin(values), std::end(values), out.begin());
}

}  // namespace

void run_force_step(const milling_physics_session_t& session, const engagement_t& engagement,
                    const milling_force_input_t& input, std::span<double> cut_forces, std::span<double> edge_forces,
                    std::span<double> moments, std::span<double> output) {
  force_run_t run(session, input, cut_forces, edge_forces, moments);
  run.side_pass(engagement);
  run.bottom_pass(engagement);
  run.write_output(output);
}

}  // namespace mech
