// The force step as a host drives it, checked against what the model gives
// in closed form for a straight-fluted flat end mill.
//
// The model's frame for a straight side flute at angle phi: t = z along the
// edge, c = -(cos phi, sin phi, 0) towards the axis, b = (sin phi, -cos phi,
// 0) the cutting direction of a tool that turns clockwise seen from above
// (the samples turn it by -dtheta). A feed f along x leaves a chip of
// h = f cos(phi) in the front half, |phi| <= pi/2 (to first order in f/R).
// A slice of height dz then carries
//   F = (Kc0 h + Ke0) dz t + (Kc1 h + Ke1) dz c + (Kc2 h + Ke2) dz b.
// N flutes over depth a, averaged over a revolution, give
// N a / (2 pi) times the integral over the front half:
//   Fx = -N a Kc1 f / 4 - N a Ke1 / pi
//   Fy = -N a Kc2 f / 4 - N a Ke2 / pi
//   Fz =  N a Kc0 f / pi + N a Ke0 / 2
// and, as only b turns about the axis, the torque
//   Mz = -R (Kc2 f / pi + Ke2 / 2) N a * 0.001.
// A force on the tool that opposes the cut and pushes the edge towards the
// axis is Kc = (Kac, Krc, -Ktc), Ke = (Kae, Kre, -Kte).

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "milling/engagement_t.h"
#include "milling/milling_physics.h"

namespace {

constexpr double pi = std::numbers::pi;
constexpr double R = 5.0;  // tool radius
constexpr int flutes = 4;
constexpr double depth = 4.0;  // axial depth of cut a
constexpr double feed = 0.1;   // feed per tooth f

// Published mechanistic coefficients of Al7075 (after Altintas).
constexpr double Ktc = 767, Krc = 168.8, Kac = 222;  // N/mm^2
constexpr double Kte = 27.7, Kre = 26.6, Kae = 0.7;  // N/mm

struct session_t {
  milling_physics_session_t* s;
  explicit session_t(double min_chip = 0, bool with_bottom = false) {
    std::vector<int> side_counts(flutes, 2), bottom_counts(flutes, with_bottom ? 2 : -1);
    std::vector<double> side, bottom, z_ranges;
    for (int j = 0; j < flutes; ++j) {
      const double theta = j * 2 * pi / flutes;
      side.insert(side.end(), {R, theta, 0, 0, R, theta, 10, 0});
      bottom.insert(bottom.end(), {0, theta, 0, 0, R, theta, 0, 0});
      z_ranges.insert(z_ranges.end(), {0, 10});
    }
    const double coeffs[6] = {Kac, Krc, -Ktc, Kae, Kre, -Kte};
    s = milling_physics_session__new(0, min_chip, 1, 0, flutes, side_counts.data(), side.data(), z_ranges.data(),
                                     bottom_counts.data(), bottom.data(), 2, nullptr, 0, coeffs, 6);
  }
  ~session_t() { milling_physics_session__delete(s); }
};

// Four slices of 1 mm over the depth, engaged over the front half.
mech::engagement_t slot() {
  mech::engagement_t e;
  for (double z = 0.5; z < depth; z += 1) e.side.push_back({z, 1.0, {{-pi / 2, pi / 2}}});
  return e;
}

milling_force_input_t move(double dx, double dz, int samples) {
  milling_force_input_t in{};
  for (double* m : {in.pose_prev, in.pose_cur}) m[0] = m[5] = m[10] = m[15] = 1;
  in.pose_cur[12] = dx;
  in.pose_cur[14] = dz;
  in.dt = 0.001;
  in.feed = 1000;
  in.omega = 1000;
  in.max_z = 100;
  in.samples = samples;
  return in;
}

struct result_t {
  std::vector<double> cut, edge, moment, out;
  int status;
  explicit result_t(int samples) : cut(3 * samples), edge(3 * samples), moment(3 * samples), out(11), status(-1) {}
  double mean(const std::vector<double>& a, int axis) const {
    double sum = 0;
    for (std::size_t k = 0; k < a.size() / 3; ++k) sum += a[3 * k + axis];
    return sum / double(a.size() / 3);
  }
  double force(int axis) const { return mean(cut, axis) + mean(edge, axis); }
};

result_t run(const session_t& session, const mech::engagement_t& e, const milling_force_input_t& in) {
  result_t r(in.samples);
  r.status =
      milling_physics__run_force_step(session.s, &e, &in, r.cut.data(), r.edge.data(), r.moment.data(), r.out.data());
  return r;
}

TEST(ForceStep, FullSlotAveragesMatchTheClosedForm) {
  const session_t session;
  ASSERT_NE(session.s, nullptr);
  const result_t r = run(session, slot(), move(feed, 0, 720));
  ASSERT_EQ(r.status, 0);
  const double na = flutes * depth;
  // The chip's f^2 / 2R term and the inclusive range ends at 720 samples
  // stay well inside 1 %.
  const double fx = -na * Krc * feed / 4 - na * Kre / pi;
  const double fy = na * Ktc * feed / 4 + na * Kte / pi;
  const double fz = na * Kac * feed / pi + na * Kae / 2;
  const double mz = R * (Ktc * feed / pi + Kte / 2) * na * 0.001;
  EXPECT_NEAR(r.force(0), fx, 0.01 * std::abs(fx));
  EXPECT_NEAR(r.force(1), fy, 0.01 * std::abs(fy));
  EXPECT_NEAR(r.force(2), fz, 0.01 * std::abs(fz));
  EXPECT_NEAR(r.mean(r.moment, 2), mz, 0.01 * mz);
  EXPECT_NEAR(r.out[0], feed, 1e-3);        // the thickest chip, at phi = 0
  EXPECT_NEAR(r.out[7], R * pi, 0.02 * R);  // each flute's slice is engaged over half its circle
}

TEST(ForceStep, EdgeForceFadesLinearlyBelowTheMinimumChip) {
  // With every chip below min_chip the edge part scales by h / min_chip:
  // its y mean becomes N a Kte f / (4 min_chip).
  const double min_chip = 0.5;
  const session_t session(min_chip);
  const result_t r = run(session, slot(), move(feed, 0, 720));
  const double expected = flutes * depth * Kte * feed / (4 * min_chip);
  EXPECT_NEAR(r.mean(r.edge, 1), expected, 0.01 * expected);
}

TEST(ForceStep, BottomCutsOnlyWhenTheToolPlunges) {
  const session_t session(0, true);
  mech::engagement_t e;
  e.ring_step = 1;
  for (double r = 0.5; r < R; r += 1) e.bottom.push_back({r, 1.0, {{-pi, pi}}});
  EXPECT_EQ(run(session, e, move(feed, 0, 360)).force(2), 0.0);
  // Rake 0 puts c along +z; every ring is whole: Fz = N (Krc p + Kre) * 5 mm.
  const double plunge = 0.05;
  const result_t r = run(session, e, move(0, -plunge, 360));
  EXPECT_NEAR(r.force(2), flutes * (Krc * plunge + Kre) * 5.0, 1e-9 * Krc);
}

TEST(ForceStep, EmptyEngagementAndNonFiniteFeed) {
  const session_t session;
  const mech::engagement_t nothing;
  milling_force_input_t in = move(feed, 0, 36);
  in.flank_flag = 1;
  const result_t r = run(session, nothing, in);
  for (double v : r.cut) EXPECT_EQ(v, 0.0);
  EXPECT_EQ(r.out[4], 0.0);
  EXPECT_EQ(r.out[10], -std::numeric_limits<double>::infinity());
  in.omega = 0;  // feed per tooth 2 pi feed / (N omega) is infinite
  const result_t stopped = run(session, slot(), in);
  for (double v : stopped.edge) EXPECT_TRUE(std::isnan(v));
}

TEST(ForceStep, BadArgumentsLeaveEveryBufferAsItWas) {
  const session_t session;
  const mech::engagement_t e = slot();
  milling_force_input_t in = move(feed, 0, 4);
  result_t r(4);
  for (auto* a : {&r.cut, &r.edge, &r.moment, &r.out}) a->assign(a->size(), 42.0);
  const auto call = [&](const milling_physics_session_t* s, const milling_force_input_t* i, double* out) {
    return milling_physics__run_force_step(s, &e, i, r.cut.data(), r.edge.data(), r.moment.data(), out);
  };
  EXPECT_EQ(call(nullptr, &in, r.out.data()), 2);
  EXPECT_EQ(call(session.s, nullptr, r.out.data()), 2);
  EXPECT_EQ(call(session.s, &in, nullptr), 2);
  EXPECT_EQ(milling_physics__run_force_step(session.s, nullptr, &in, r.cut.data(), r.edge.data(), r.moment.data(),
                                            r.out.data()),
            2);
  in.samples = 0;
  EXPECT_EQ(call(session.s, &in, r.out.data()), 2);
  for (const auto* a : {&r.cut, &r.edge, &r.moment, &r.out})
    for (double v : *a) EXPECT_EQ(v, 42.0);
}

TEST(ForceStep, SessionRejectsCountsThatAreNotTheModels) {
  const int one = 1, minus = -1;
  const double points[4] = {R, 0, 0, 0}, z[2] = {0, 10}, c[12] = {};
  const int dims3[3] = {1, 1, 1};
  const auto make = [&](int model, const int* dims, int nd, int nc, const int* side) {
    milling_physics_session_t* s =
        milling_physics_session__new(0, 0, 1, 0, 1, side, points, z, &minus, nullptr, model, dims, nd, c, nc);
    const bool made = s != nullptr;
    milling_physics_session__delete(s);
    return made;
  };
  EXPECT_TRUE(make(1, nullptr, 0, 4, &one));
  EXPECT_FALSE(make(1, nullptr, 0, 5, &one));
  EXPECT_FALSE(make(6, nullptr, 0, 4, &one));
  EXPECT_FALSE(make(2, dims3, 1, 6, &one));
  EXPECT_TRUE(make(4, dims3, 3, 9, &one));  // 3 * 1 * 1 * 1 + 6 * 1
  EXPECT_FALSE(make(4, dims3, 3, 12, &one));
  EXPECT_FALSE(make(1, nullptr, 0, 4, &minus));
  EXPECT_EQ(milling_physics_session__new(0, 0, 1, 0, 1, nullptr, points, z, &minus, nullptr, 1, nullptr, 0, c, 4),
            nullptr);
  EXPECT_EQ(
      milling_physics_session__new(0, 0, 1, 0, -1, nullptr, nullptr, nullptr, nullptr, nullptr, 1, nullptr, 0, c, 4),
      nullptr);
}

}  // namespace
