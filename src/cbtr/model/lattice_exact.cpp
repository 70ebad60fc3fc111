#include "cbtr/model/lattice_exact.h"

#include <cmath>
#include <limits>

namespace cbtr {

namespace {

constexpr double steps_per_unit = 1024.0;

double nearest_lattice(double x) { return std::round(x * steps_per_unit) / steps_per_unit; }

}  // namespace

geom::fr lattice_fraction(double x) { return geom::fr(static_cast<std::int64_t>(x * steps_per_unit), 1024); }

double lattice_safe_double(geom::fr t) {
  const double d = t.value();
  if (!std::isfinite(d)) return d;
  const double l = nearest_lattice(d);
  const int order = geom::compare(t, lattice_fraction(l));
  if (order == 0) return l;
  if (order < 0 && d >= l) return std::nextafter(l, -std::numeric_limits<double>::infinity());
  if (order > 0 && d <= l) return std::nextafter(l, std::numeric_limits<double>::infinity());
  return d;
}

bool clear_of_lattice(double estimate, double bound) {
  const double l = nearest_lattice(estimate);
  return std::abs(estimate - l) > bound;
}

}  // namespace cbtr
