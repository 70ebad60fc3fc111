#pragma once

// Cutting coefficients of the mechanistic force model: Kc multiplies the
// chip area, Ke the edge length, each with three components along the
// force frame's axes. Five models, by what the coefficients depend on:
//   1  one Kc and Ke, the first component 0        4 coefficients
//   2  one Kc and Ke                               6
//   3  a Kc, Ke row per flute (dims n)             6n
//   4  Kc over the cutting speed's polar and azimuth angle per flute
//      (dims n, nb, nc), then n base Kc, then n Ke  3 nb nc n + 6n
//   5  Kc over tooth angle and edge inclination per flute (dims n, na, ne,
//      half_range), then n bottom Kc, then one Ke   3 na ne n + 3n + 3

#include <array>
#include <optional>
#include <span>
#include <vector>

#include "geom/vec3.h"

namespace mech {

using coeff3_t = std::array<double, 3>;

struct kc_ke_t {
  coeff3_t kc;
  coeff3_t ke;
};

class cutting_coefficients_t {
 public:
  // Nothing when the model is not 1 to 5 or the counts are not the model's.
  static std::optional<cutting_coefficients_t> make(int model, std::span<const int> dims,
                                                    std::span<const double> coeffs);

  int model() const { return _model; }

  // Models 1 to 4: the coefficients of a flute where the edge moves with
  // local velocity vl (edge frame), which only model 4 reads.
  kc_ke_t for_edge(std::size_t flute, const geom::vec3d& vl) const;

  // Model 5: Kc at a tooth angle and an edge inclination; the bottom's Kc;
  // the one Ke.
  coeff3_t tooth_kc(std::size_t flute, double tooth_angle, double inclination) const;
  coeff3_t bottom_kc(std::size_t flute) const;
  coeff3_t model5_ke() const;

 private:
  int _model = 0;
  std::size_t _n = 0;   // rows by flute
  std::size_t _nb = 0;  // model 4: polar steps; model 5: tooth angle steps
  std::size_t _nc = 0;  // model 4: azimuth steps; model 5: inclination steps
  bool _half_range = false;
  std::vector<double> _c;

  coeff3_t row(std::size_t index) const;
  coeff3_t polar_row(std::size_t flute, std::size_t polar, std::size_t azimuth) const;
  coeff3_t model4_kc(std::size_t flute, const geom::vec3d& vl) const;
};

}  // namespace mech
