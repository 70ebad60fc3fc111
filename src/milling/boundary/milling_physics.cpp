#include "milling/milling_physics.h"

#include <new>
#include <optional>
#include <span>

#include "milling/engagement_t.h"
#include "milling/force_step.h"
#include "milling/milling_physics_session_t.h"

namespace {

// count records of four doubles from points, which moves past them.
std::vector<mech::edge_point_t> edge_records(const double*& points, int count) {
  std::vector<mech::edge_point_t> out(static_cast<std::size_t>(count));
  for (mech::edge_point_t& p : out) {
    p = {points[0], points[1], points[2], points[3]};
    points += 4;
  }
  return out;
}

// Whether every count is usable and the point arrays are there for them.
bool flute_arrays_usable(int flute_count, const int* side_counts, const double* side_points, const double* z_ranges,
                         const int* bottom_counts, const double* bottom_points) {
  if (flute_count < 0) return false;
  if (flute_count == 0) return true;
  if (!side_counts || !z_ranges || !bottom_counts) return false;
  bool sides = false, bottoms = false;
  for (int i = 0; i < flute_count; ++i) {
    if (side_counts[i] < 0) return false;
    sides = sides || side_counts[i] > 0;
    bottoms = bottoms || bottom_counts[i] > 0;
  }
  return (!sides || side_points) && (!bottoms || bottom_points);
}

}  // namespace

extern "C" {

milling_physics_session_t* milling_physics_session__new(double flank_angle, double min_chip, double power_factor,
                                                        double feed_ref_z, int flute_count, const int* side_counts,
                                                        const double* side_points, const double* z_ranges,
                                                        const int* bottom_counts, const double* bottom_points,
                                                        int model, const int* dims, int dims_count,
                                                        const double* coeffs, int coeff_count) noexcept {
  if (!flute_arrays_usable(flute_count, side_counts, side_points, z_ranges, bottom_counts, bottom_points)) {
    return nullptr;
  }
  if (dims_count < 0 || coeff_count < 0 || (dims_count > 0 && !dims) || (coeff_count > 0 && !coeffs)) return nullptr;
  try {
    std::optional<mech::cutting_coefficients_t> k = mech::cutting_coefficients_t::make(
        model, {dims, static_cast<std::size_t>(dims_count)}, {coeffs, static_cast<std::size_t>(coeff_count)});
    if (!k) return nullptr;
    auto* s = new mech::milling_physics_session_t{flank_angle, min_chip, power_factor, feed_ref_z, {}, *k};
    for (int i = 0; i < flute_count; ++i) {
      mech::flute_t& f = s->flutes.emplace_back();
      f.side_edge = edge_records(side_points, side_counts[i]);
      f.z_min = z_ranges[2 * i];
      f.z_max = z_ranges[2 * i + 1];
      f.has_bottom = bottom_counts[i] >= 0;
      if (f.has_bottom) f.bottom_edge = edge_records(bottom_points, bottom_counts[i]);
    }
    return s;
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void milling_physics_session__delete(milling_physics_session_t* session) noexcept { delete session; }

int milling_physics__run_force_step(const milling_physics_session_t* session, const milling_engagement_t* engagement,
                                    const milling_force_input_t* input, double* cut_forces, double* edge_forces,
                                    double* moments, double* output) noexcept {
  if (!session || !engagement || !input || !cut_forces || !edge_forces || !moments || !output) return 2;
  if (input->samples < 1) return 2;
  const auto n = 3 * static_cast<std::size_t>(input->samples);
  try {
    mech::run_force_step(*session, *engagement, *input, {cut_forces, n}, {edge_forces, n}, {moments, n},
                         {output, MILLING_FORCE_OUTPUT_COUNT});
  } catch (const std::bad_alloc&) {
    return 2;  // the step's own table of sample angles did not fit; nothing was written yet
  }
  return 0;
}
}
