// Any bytes as the byte form of a numerator and a denominator (the first
// byte splits the rest between them); the fraction is then written back,
// evaluated, printed, reduced, combined and re-approximated, and the first
// sixteen bytes also tried as a value and a resolution for new_val.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "geom/fraction_unlimited.h"

namespace {

// A positive numerator's form must read back as the same integer (a
// negative one of 8k bits need not: the form is lopsided on purpose).
void check_round_trip(const fraction_unlimited_t* f) {
  if (fraction_unlimited__sign(f) <= 0) return;
  const std::int32_t size = fraction_unlimited__get_num_bytes_size(f);
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
  fraction_unlimited__get_num_bytes(f, bytes.data(), size);
  fraction_unlimited_t* back = fraction_unlimited__new_int(0);
  fraction_unlimited__set_num_bytes(back, bytes.data(), size);
  char* wrote = fraction_unlimited__get_num_str(f);
  char* read = fraction_unlimited__get_num_str(back);
  const bool same = std::strcmp(wrote, read) == 0;
  fraction_unlimited__free_str(read);
  fraction_unlimited__free_str(wrote);
  fraction_unlimited__delete(back);
  if (!same) std::abort();
}

void exercise(fraction_unlimited_t* f) {
  check_round_trip(f);
  fraction_unlimited_t* square = fraction_unlimited__get_square(f);
  fraction_unlimited_t* sum = fraction_unlimited__add(f, square);
  fraction_unlimited__compare(sum, f);
  fraction_unlimited__value(sum);
  fraction_unlimited__floor_int(sum);
  fraction_unlimited__simplify(sum, 1.0 / 1024);
  fraction_unlimited__delete(sum);
  fraction_unlimited__delete(square);
}

void try_new_val(const std::uint8_t* data, std::size_t size) {
  if (size < 16) return;
  double value = 0;
  double resolution = 0;
  std::memcpy(&value, data, 8);
  std::memcpy(&resolution, data + 8, 8);
  fraction_unlimited__delete(fraction_unlimited__new_val(value, resolution));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::size_t rest = size - 1;
  const std::size_t num_size = std::min<std::size_t>(data[0], rest);
  fraction_unlimited_t* f = fraction_unlimited__new_int(0);
  fraction_unlimited__set_num_bytes(f, data + 1, static_cast<std::int32_t>(num_size));
  fraction_unlimited__set_den_bytes(f, data + 1 + num_size, static_cast<std::int32_t>(rest - num_size));
  exercise(f);
  fraction_unlimited__delete(f);
  try_new_val(data + 1, rest);
  return 0;
}
