#include "cbtr/build/judge_value.h"

#include <array>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include "cbtr/model/cell_numbering.h"

namespace cbtr {

namespace {

struct width_probe_t {
  std::atomic<std::uint32_t> max_operand{0};
  std::atomic<std::uint32_t> max_before{0};
  std::atomic<std::uint32_t> max_after{0};
  std::atomic<std::uint64_t> samples{0};
  std::array<std::atomic<std::uint64_t>, 8> buckets{};

  // The report goes out when the library unloads.
  ~width_probe_t() {
    const std::string text = width_probe_report();
    if (text.empty()) return;
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
  }
};

struct sharp_counters_t {
  std::atomic<std::uint64_t> edges_encoded{0};
  std::atomic<std::uint64_t> edges_without_winner{0};
  std::atomic<std::uint64_t> leaves_hashed{0};
  std::atomic<std::uint64_t> hash_sum{0};
};

width_probe_t probe;
sharp_counters_t sharp;

void raise_max(std::atomic<std::uint32_t>& m, std::uint32_t v) {
  std::uint32_t seen = m.load(std::memory_order_relaxed);
  while (seen < v && !m.compare_exchange_weak(seen, v, std::memory_order_relaxed)) {
  }
}

// Doublings of 64 up to the width: <64 is 0, <128 is 1, ... <4096 is 6.
int bucket_of(std::size_t width) {
  int b = 0;
  for (std::size_t bound = 64; b < 7 && width >= bound; bound *= 2) ++b;
  return b;
}

void sample_widths(std::size_t operand, std::size_t before, std::size_t after) {
  raise_max(probe.max_operand, static_cast<std::uint32_t>(operand));
  raise_max(probe.max_before, static_cast<std::uint32_t>(before));
  raise_max(probe.max_after, static_cast<std::uint32_t>(after));
  probe.samples.fetch_add(1, std::memory_order_relaxed);
  probe.buckets[bucket_of(before)].fetch_add(1, std::memory_order_relaxed);
}

void pack_if_wide(fr& f) {
  if (f.needs_pack()) f.pack();
}

std::uint16_t octahedral_word(const vec3d& n) {
  const double s = std::abs(n.x) + std::abs(n.y) + std::abs(n.z);
  if (!(s > 0)) return 0;
  const auto sgn = [](double x) { return x < 0 ? -1.0 : 1.0; };
  double u = n.x / s, v = n.y / s;
  if (n.z < 0) {
    const double fu = (1 - std::abs(v)) * sgn(u), fv = (1 - std::abs(u)) * sgn(v);
    u = fu;
    v = fv;
  }
  const auto byte = [](double c) { return static_cast<std::uint16_t>(std::lround((c * 0.5 + 0.5) * 255.0)); };
  return static_cast<std::uint16_t>((byte(u) << 8) | byte(v));
}

std::uint16_t tip_word(const edge_tips_t& et, int e) {
  const std::uint32_t code = edge_code(et.corners, e);
  if (code != edge_code_low_solid && code != edge_code_high_solid) return 0;
  const tri_extension_t* winner = et.sides[e][code == edge_code_low_solid ? 1 : 0].winner;
  if (!winner) {
    sharp.edges_without_winner.fetch_add(1, std::memory_order_relaxed);
    return 0;
  }
  sharp.edges_encoded.fetch_add(1, std::memory_order_relaxed);
  return octahedral_word(winner->normal_d);
}

}  // namespace

tip_flags_t tip_flags_from(const char* pack, const char* probe_var, const char* sharp_var) {
  return {pack != nullptr, probe_var != nullptr,
          sharp_var != nullptr && sharp_var[0] != '\0' && std::strcmp(sharp_var, "0") != 0};
}

const tip_flags_t& tip_flags() {
  static const tip_flags_t flags = tip_flags_from(std::getenv("QV_CBTR_PACK"), std::getenv("QV_CBTR_WIDTH_PROBE"),
                                                  std::getenv("QV_CBTR_SHARP_ENCODE_A"));
  return flags;
}

namespace {
// Read when the library loads, never again.
[[maybe_unused]] const tip_flags_t& flags_at_load = tip_flags();
}  // namespace

std::size_t fraction_bit_width(const fr& f) {
  if (f.num.is_zero()) return 0;
  return std::max(geom::bit_length(f.num), geom::bit_length(f.den));
}

namespace {

// -n_other / n_axis, packed as the switches say, and watched by the probe.
fr judged_quotient(const fr& n_other, const fr& n_axis) {
  const tip_flags_t& flags = tip_flags();
  fr result = -n_other;
  if (flags.pack) pack_if_wide(result);
  result /= n_axis;
  const std::size_t before = flags.width_probe ? fraction_bit_width(result) : 0;
  if (!result.is_packed()) result.pack();
  if (flags.width_probe)
    sample_widths(std::max(fraction_bit_width(n_other), fraction_bit_width(n_axis)), before,
                  fraction_bit_width(result));
  return result;
}

}  // namespace

judge_t judge_value(const tri_extension_t& tri, int axis) {
  const fr& n = component(tri.tri.normal, axis);
  return {judged_quotient(component(tri.tri.normal, axis_after(axis)), n),
          judged_quotient(component(tri.tri.normal, axis_before(axis)), n)};
}

int compare_judges(const judge_t& a, const judge_t& b) {
  const int first = geom::compare(a.first, b.first);
  return first != 0 ? first : geom::compare(a.second, b.second);
}

std::string width_probe_report() {
  const std::uint64_t samples = probe.samples.load();
  if (samples == 0) return {};
  static constexpr const char* labels[8] = {"<64", "<128", "<256", "<512", "<1024", "<4096", "<16384", ">=16384"};
  std::ostringstream out;
  out << "\n== cbtr tips judge-value width probe ==\n"
      << "  samples          " << samples << "\n"
      << "  max operand      " << probe.max_operand.load() << " bits\n"
      << "  max before pack  " << probe.max_before.load() << " bits\n"
      << "  max after pack   " << probe.max_after.load() << " bits\n";
  for (int b = 0; b < 8; ++b) {
    const std::uint64_t n = probe.buckets[b].load();
    if (n) out << "  before pack " << labels[b] << " bits: " << n << " (" << 100.0 * n / samples << "%)\n";
  }
  return out.str();
}

void sharp_encode_leaf(const edge_tips_t& evaluation) {
  std::uint64_t h = 0x14650fb0739d0383ULL;
  for (int e = 0; e < 12; ++e) h = (h ^ tip_word(evaluation, e)) * 0x100000001b3ULL;
  sharp.hash_sum.fetch_add(h, std::memory_order_relaxed);
  sharp.leaves_hashed.fetch_add(1, std::memory_order_relaxed);
}

}  // namespace cbtr
